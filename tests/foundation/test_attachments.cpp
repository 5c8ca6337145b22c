#include "foundation/Messages.h"
#include "foundation/WAttachable.h"
#include "foundation/WAttachment.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

class Recording : public WAttachment {
  public:
    Recording(std::int32_t message, bool runHost, int* deaths = nullptr)
        : WAttachment(message, runHost), fDeaths(deaths) {}
    ~Recording() override {
        if (fDeaths) ++*fDeaths;
    }
    void RunSelf(std::int32_t message, void* parameter) override {
        messages.push_back(message);
        lastParameter = parameter;
    }
    std::vector<std::int32_t> messages;
    void* lastParameter = nullptr;

  private:
    int* fDeaths;
};

class Host : public WAttachable {};

} // namespace

TEST(Attachments, RunOnlyForTheirMessageAndAllRun) {
    Host host;
    Recording submit(kMsgSubmitAdorners, false);
    Recording any(kMsgAnyMessage, true);
    host.AddAttachment(&submit, 0, false);
    host.AddAttachment(&any, 0, false);
    EXPECT_EQ(submit.GetOwner(), nullptr);

    int context = 0;
    EXPECT_FALSE(host.RunAttachments(kMsgSubmitAdorners, &context));
    EXPECT_TRUE(host.RunAttachments(kMsgAdornerSecondPass, &context));
    EXPECT_EQ(submit.messages, (std::vector<std::int32_t>{kMsgSubmitAdorners}));
    EXPECT_EQ(submit.lastParameter, &context);
    // The false of the first did not stop the second.
    EXPECT_EQ(any.messages, (std::vector<std::int32_t>{kMsgSubmitAdorners, kMsgAdornerSecondPass}));

    submit.SetMessage(kMsgAdornerSecondPass);
    submit.SetRunHost(true);
    EXPECT_TRUE(host.RunAttachments(kMsgAdornerSecondPass, nullptr));
    EXPECT_EQ(submit.messages.back(), kMsgAdornerSecondPass);

    // A removed attachment leaves an empty slot that is passed over.
    host.RemoveAttachment(&submit);
    host.RunAttachments(kMsgAdornerSecondPass, nullptr);
    EXPECT_EQ(submit.messages.size(), 2u);
    EXPECT_EQ(any.messages.size(), 4u);
    host.RemoveAttachment(&any);
}

TEST(Attachments, HostDeletesOnlyWhatItOwns) {
    int deaths = 0;
    auto* owned = new Recording(kMsgAnyMessage, true, &deaths);
    auto notOwned = std::make_unique<Recording>(kMsgAnyMessage, true, &deaths);
    auto member = std::make_unique<Recording>(kMsgAnyMessage, true, &deaths);
    {
        Host host;
        host.AddAttachment(owned, 0, true);
        host.AddAttachment(notOwned.get(), 0, false);
        host.AddAttachment(member.get(), 0, false);
        EXPECT_EQ(owned->GetOwner(), &host);
        // One that its maker deletes first is never looked at again.
        member.reset();
        EXPECT_EQ(deaths, 1);
    }
    EXPECT_EQ(deaths, 2);
    notOwned.reset();
    EXPECT_EQ(deaths, 3);
}

TEST(Attachments, OwnedAttachmentLeavesTheHostWhenDeletedOrRemoved) {
    int deaths = 0;
    Host host;
    auto* first = new Recording(kMsgAnyMessage, false, &deaths);
    auto* second = new Recording(kMsgAnyMessage, true, &deaths);
    host.AddAttachment(first, 0, true);
    host.AddAttachment(second, 0, true);
    delete first;
    EXPECT_FALSE(host.HasAttachment(first));
    EXPECT_TRUE(host.RunAttachments(1, nullptr));

    host.RemoveAttachment(second);
    EXPECT_EQ(second->GetOwner(), nullptr);
    host.RemoveAllAttachments();
    EXPECT_EQ(host.GetAttachmentCount(), 0);
    EXPECT_EQ(deaths, 1);
    delete second;
}

TEST(Attachments, TableHoldsTen) {
    Host host;
    std::vector<std::unique_ptr<Recording>> attachments;
    for (int i = 0; i < 11; ++i) {
        attachments.push_back(std::make_unique<Recording>(kMsgAnyMessage, true));
        host.AddAttachment(attachments.back().get(), 0, true);
    }
    EXPECT_EQ(host.GetAttachmentCount(), 10);
    EXPECT_EQ(attachments[10]->GetOwner(), nullptr);
    host.RunAttachments(1, nullptr);
    EXPECT_TRUE(attachments[10]->messages.empty());
    attachments.clear(); // each takes itself out of the host
    EXPECT_TRUE(host.RunAttachments(1, nullptr));
}
