#include "foundation/KCommandsAttachment.h"
#include "foundation/Messages.h"
#include "foundation/WCommander.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

// Takes one command and records every message it is asked about.
class TakesOne : public KCommandsAttachment {
  public:
    explicit TakesOne(std::int32_t command) : fCommand(command) {}
    bool HandleCommand(std::int32_t message, void* parameter) override {
        asked.push_back(message);
        if (message != fCommand) return false;
        lastParameter = parameter;
        return true;
    }
    std::vector<std::int32_t> asked;
    void* lastParameter = nullptr;

  private:
    std::int32_t fCommand;
};

// Obeys one command itself instead of handing it up.
class Performer : public KCommandsHandler {
  public:
    Performer(WCommander* parent, std::int32_t command)
        : KCommandsHandler(parent), fCommand(command) {}
    bool PerformCommand(std::int32_t command, void* parameter) override {
        if (command == fCommand) {
            ++performed;
            return true;
        }
        return KCommandsHandler::PerformCommand(command, parameter);
    }
    int performed = 0;

  private:
    std::int32_t fCommand;
};

} // namespace

TEST(Commands, CommandsAttachmentInvertsAndLetsStatusPass) {
    TakesOne takes(kCmdAddLight);
    EXPECT_EQ(takes.GetMessage(), kMsgAnyMessage);
    EXPECT_TRUE(takes.GetRunHost());
    int block[2] = {};
    EXPECT_FALSE(takes.Run(kCmdAddLight, block));
    EXPECT_EQ(takes.lastParameter, block);
    EXPECT_TRUE(takes.Run(42, nullptr));
    EXPECT_TRUE(takes.Run(kMsgCommandStatus, nullptr));
    EXPECT_EQ(takes.asked, (std::vector<std::int32_t>{kCmdAddLight, 42}));
    bool enabled = true;
    EXPECT_FALSE(takes.QueryCommandStatus(kCmdAddLight, &enabled, nullptr, nullptr, nullptr));
}

TEST(Commands, CommandsClimbTheParentChain) {
    KCommandsHandler top(nullptr);
    KCommandsHandler middle(&top);
    KCommandsHandler bottom(&middle);
    TakesOne atTop(kCmdAddLight), atMiddle(7), atBottom(8);
    top.AddAttachment(&atTop, 0, false);
    middle.AddAttachment(&atMiddle, 0, false);
    bottom.AddAttachment(&atBottom, 0, false);

    int block[2] = {};
    EXPECT_TRUE(bottom.DispatchCommand(kCmdAddLight, block));
    EXPECT_EQ(atTop.lastParameter, block);
    EXPECT_EQ(atMiddle.asked, (std::vector<std::int32_t>{kCmdAddLight}));

    // Taken on the way up: the commanders above never see it.
    EXPECT_TRUE(bottom.DispatchCommand(7, nullptr));
    EXPECT_EQ(atTop.asked, (std::vector<std::int32_t>{kCmdAddLight}));

    // Nobody takes it: it climbs to the top and yields false there.
    EXPECT_FALSE(bottom.DispatchCommand(99, nullptr));
    EXPECT_EQ(atBottom.asked.back(), 99);
    EXPECT_EQ(atMiddle.asked.back(), 99);
    EXPECT_EQ(atTop.asked.back(), 99);

    top.RemoveAttachment(&atTop);
    middle.RemoveAttachment(&atMiddle);
    bottom.RemoveAttachment(&atBottom);
    EXPECT_FALSE(bottom.DispatchCommand(kCmdAddLight, nullptr));
}

TEST(Commands, PerformCommandOverrideTakesTheCommand) {
    Performer root(nullptr, kCmdAddLight);
    KCommandsHandler child(&root);
    EXPECT_TRUE(child.DispatchCommand(kCmdAddLight, nullptr));
    EXPECT_EQ(root.performed, 1);
    EXPECT_FALSE(child.DispatchCommand(5, nullptr));
}

TEST(Commands, DefaultCommanderFollowsTheNewest) {
    auto older = std::make_unique<KCommandsHandler>(nullptr);
    EXPECT_EQ(WCommander::GetDefaultCommander(), older.get());
    auto newer = std::make_unique<KCommandsHandler>();
    EXPECT_EQ(WCommander::GetDefaultCommander(), newer.get());
    EXPECT_EQ(newer->GetParentCommander(), older.get());

    older.reset();
    EXPECT_EQ(WCommander::GetDefaultCommander(), newer.get());
    // The child of a dead commander no longer leads to it.
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
    EXPECT_EQ(root.performed, 1);

    root.SetParentCommander(&leaf);
    EXPECT_EQ(root.GetParentCommander(), nullptr);
    leaf.SetParentCommander(&leaf);
    EXPECT_EQ(leaf.GetParentCommander(), &root);
    EXPECT_FALSE(leaf.DispatchCommand(3, nullptr));
    leaf.SetParentCommander(nullptr);
    EXPECT_FALSE(leaf.PerformCommand(3, nullptr));
}

TEST(Commands, OwnedCommandsAttachmentDiesWithItsCommander) {
    struct Counted : KCommandsAttachment {
        explicit Counted(int* deaths) : deaths(deaths) {}
        ~Counted() override { ++*deaths; }
        bool HandleCommand(std::int32_t, void*) override { return true; }
        int* deaths;
    };
    int deaths = 0;
    {
        KCommandsHandler handler(nullptr);
        handler.AddAttachment(new Counted(&deaths), 0, true);
        EXPECT_TRUE(handler.DispatchCommand(1, nullptr));
    }
    EXPECT_EQ(deaths, 1);
}
