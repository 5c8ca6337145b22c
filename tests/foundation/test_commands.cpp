#include "foundation/KCommandsAttachment.h"
#include "foundation/Messages.h"
#include "foundation/WCommander.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

// Takes one command and records every message it is asked about.
struct TakesOne : KCommandsAttachment {
    explicit TakesOne(std::int32_t command) : command(command) {}
    bool HandleCommand(std::int32_t message, void* parameter) override {
        asked.push_back(message);
        if (message != command) return false;
        lastParameter = parameter;
        return true;
    }
    std::int32_t command;
    std::vector<std::int32_t> asked;
    void* lastParameter = nullptr;
};

// Obeys one command itself instead of handing it up.
struct Performer : KCommandsHandler {
    Performer(WCommander* parent, std::int32_t command)
        : KCommandsHandler(parent), command(command) {}
    bool PerformCommand(std::int32_t message, void* parameter) override {
        if (message != command) return KCommandsHandler::PerformCommand(message, parameter);
        ++performed;
        return true;
    }
    std::int32_t command;
    int performed = 0;
};

} // namespace

TEST(Commands, CommandsAttachmentInvertsAndLetsStatusPass) {
    TakesOne takes(kCmdAddLight);
    int block[2] = {};
    EXPECT_FALSE(takes.Run(kCmdAddLight, block));
    EXPECT_EQ(takes.lastParameter, block);
    EXPECT_TRUE(takes.Run(42, nullptr));
    EXPECT_TRUE(takes.Run(kMsgCommandStatus, nullptr));
    EXPECT_EQ(takes.asked, (std::vector<std::int32_t>{kCmdAddLight, 42}));
    EXPECT_FALSE(takes.QueryCommandStatus(kCmdAddLight, nullptr, nullptr, nullptr, nullptr));
}

TEST(Commands, CommandsClimbTheParentChain) {
    KCommandsHandler top(nullptr);
    KCommandsHandler middle(&top);
    KCommandsHandler bottom(&middle);
    TakesOne atTop(kCmdAddLight), atMiddle(7);
    top.AddAttachment(&atTop, 0, false);
    middle.AddAttachment(&atMiddle, 0, false);

    int block[2] = {};
    EXPECT_TRUE(bottom.DispatchCommand(kCmdAddLight, block));
    EXPECT_EQ(atTop.lastParameter, block);
    EXPECT_TRUE(bottom.DispatchCommand(7, nullptr)); // taken halfway up
    EXPECT_FALSE(bottom.DispatchCommand(99, nullptr));
    EXPECT_EQ(atMiddle.asked, (std::vector<std::int32_t>{kCmdAddLight, 7, 99}));
    EXPECT_EQ(atTop.asked, (std::vector<std::int32_t>{kCmdAddLight, 99}));

    top.RemoveAttachment(&atTop);
    middle.RemoveAttachment(&atMiddle);
    EXPECT_FALSE(bottom.DispatchCommand(kCmdAddLight, nullptr));

    Performer root(nullptr, kCmdAddLight);
    KCommandsHandler child(&root);
    EXPECT_TRUE(child.DispatchCommand(kCmdAddLight, nullptr));
    EXPECT_EQ(root.performed, 1);
}

TEST(Commands, DefaultCommanderFollowsTheNewest) {
    auto older = std::make_unique<KCommandsHandler>(nullptr);
    EXPECT_EQ(WCommander::GetDefaultCommander(), older.get());
    auto newer = std::make_unique<KCommandsHandler>();
    EXPECT_EQ(WCommander::GetDefaultCommander(), newer.get());
    EXPECT_EQ(newer->GetParentCommander(), older.get());

    older.reset();
    EXPECT_EQ(WCommander::GetDefaultCommander(), newer.get());
    EXPECT_EQ(newer->GetParentCommander(), nullptr);
    EXPECT_FALSE(newer->DispatchCommand(kCmdAddLight, nullptr));
    newer.reset();
    EXPECT_EQ(WCommander::GetDefaultCommander(), nullptr);
}

TEST(Commands, DeadCommanderIsBridgedAndLoopsAreRefused) {
    Performer root(nullptr, kCmdAddLight);
    auto middle = std::make_unique<KCommandsHandler>(&root);
    KCommandsHandler leaf(middle.get());
    middle.reset();
    EXPECT_EQ(leaf.GetParentCommander(), &root);
    EXPECT_TRUE(leaf.DispatchCommand(kCmdAddLight, nullptr));

    root.SetParentCommander(&leaf);
    leaf.SetParentCommander(&leaf);
    EXPECT_EQ(root.GetParentCommander(), nullptr);
    EXPECT_EQ(leaf.GetParentCommander(), &root);
    EXPECT_FALSE(leaf.DispatchCommand(3, nullptr));
}
