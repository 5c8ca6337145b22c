#include "foundation/Messages.h"
#include "foundation/WAttachable.h"
#include "foundation/WAttachment.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

struct Seen {
    std::int32_t message;
    void* parameter;
};

class RecordingAttachment : public WAttachment {
  public:
    RecordingAttachment(std::int32_t message, bool runHost, int* deaths = nullptr)
        : WAttachment(message, runHost), fDeaths(deaths) {}
    ~RecordingAttachment() override {
        if (fDeaths) ++*fDeaths;
    }
    void RunSelf(std::int32_t message, void* parameter) override {
        seen.push_back({message, parameter});
    }
    std::vector<Seen> seen;

  private:
    int* fDeaths;
};

class Host : public WAttachable {};

} // namespace

TEST(Attachments, AttachmentRunsForItsOwnMessageOnly) {
    Host host;
    RecordingAttachment submit(kMsgSubmitAdorners, false);
    host.AddAttachment(&submit, 0, false);
    EXPECT_EQ(submit.GetOwner(), nullptr);

    int context = 0;
    EXPECT_FALSE(host.RunAttachments(kMsgSubmitAdorners, &context));
    EXPECT_TRUE(host.RunAttachments(kMsgAdornerSecondPass, &context));
    ASSERT_EQ(submit.seen.size(), 1u);
    EXPECT_EQ(submit.seen[0].message, kMsgSubmitAdorners);
    EXPECT_EQ(submit.seen[0].parameter, &context);

    submit.SetRunHost(true);
    EXPECT_TRUE(host.RunAttachments(kMsgSubmitAdorners, nullptr));
    submit.SetMessage(kMsgAdornerSecondPass);
    host.RunAttachments(kMsgSubmitAdorners, nullptr);
    host.RunAttachments(kMsgAdornerSecondPass, nullptr);
    ASSERT_EQ(submit.seen.size(), 3u);
    EXPECT_EQ(submit.seen[2].message, kMsgAdornerSecondPass);
    host.RemoveAttachment(&submit);
}

TEST(Attachments, AnyMessageAttachmentAndNoStopAtFalse) {
    Host host;
    RecordingAttachment refuses(kMsgSubmitAdorners, false);
    RecordingAttachment any(kMsgAnyMessage, true);
    host.AddAttachment(&refuses, 0, false);
    host.AddAttachment(&any, 0, false);
    EXPECT_FALSE(host.RunAttachments(kMsgSubmitAdorners, nullptr));
    EXPECT_TRUE(host.RunAttachments(12345, nullptr));
    EXPECT_TRUE(host.RunAttachments(kMsgCommandStatus, nullptr));
    ASSERT_EQ(any.seen.size(), 3u);
    EXPECT_EQ(any.seen[0].message, kMsgSubmitAdorners);
    EXPECT_EQ(any.seen[1].message, 12345);
    EXPECT_EQ(any.seen[2].message, kMsgCommandStatus);
    EXPECT_EQ(refuses.seen.size(), 1u);

    // A removed attachment leaves an empty slot that is passed over.
    host.RemoveAttachment(&refuses);
    EXPECT_TRUE(host.RunAttachments(kMsgSubmitAdorners, nullptr));
    EXPECT_EQ(refuses.seen.size(), 1u);
    EXPECT_EQ(host.GetAttachmentCount(), 2);
    host.RemoveAttachment(&any);
}

TEST(Attachments, HostDeletesOnlyWhatItOwns) {
    int deaths = 0;
    auto* owned = new RecordingAttachment(kMsgAnyMessage, true, &deaths);
    auto notOwned = std::make_unique<RecordingAttachment>(kMsgAnyMessage, true, &deaths);
    {
        Host host;
        host.AddAttachment(owned, 0, true);
        host.AddAttachment(notOwned.get(), 0, false);
        EXPECT_EQ(owned->GetOwner(), &host);
        EXPECT_EQ(notOwned->GetOwner(), nullptr);
    }
    EXPECT_EQ(deaths, 1);
    notOwned.reset();
    EXPECT_EQ(deaths, 2);

    // An attachment that belongs to its maker may die before the host: the
    // host does not look at it on its way out.
    auto host = std::make_unique<Host>();
    auto member = std::make_unique<RecordingAttachment>(kMsgSubmitAdorners, true, &deaths);
    host->AddAttachment(member.get(), 0, false);
    member.reset();
    host.reset();
    EXPECT_EQ(deaths, 3);
}

TEST(Attachments, OwnedAttachmentDyingLeavesTheHost) {
    int deaths = 0;
    Host host;
    auto* first = new RecordingAttachment(kMsgAnyMessage, false, &deaths);
    auto* second = new RecordingAttachment(kMsgAnyMessage, true, &deaths);
    host.AddAttachment(first, 0, true);
    host.AddAttachment(second, 0, true);
    delete first;
    EXPECT_FALSE(host.HasAttachment(first));
    EXPECT_TRUE(host.RunAttachments(1, nullptr));
    EXPECT_EQ(second->seen.size(), 1u);

    // Removing gives the attachment back to the caller.
    host.RemoveAttachment(second);
    EXPECT_EQ(second->GetOwner(), nullptr);
    host.RemoveAllAttachments();
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(host.GetAttachmentCount(), 0);
    delete second;
    EXPECT_EQ(deaths, 2);
}

TEST(Attachments, TableHoldsTen) {
    Host host;
    std::vector<std::unique_ptr<RecordingAttachment>> attachments;
    for (int i = 0; i < 11; ++i) {
        attachments.push_back(std::make_unique<RecordingAttachment>(kMsgAnyMessage, true));
        host.AddAttachment(attachments.back().get(), 0, true);
    }
    EXPECT_EQ(host.GetAttachmentCount(), 10);
    EXPECT_FALSE(host.HasAttachment(attachments[10].get()));
    EXPECT_EQ(attachments[10]->GetOwner(), nullptr);
    host.RunAttachments(1, nullptr);
    EXPECT_EQ(attachments[9]->seen.size(), 1u);
    EXPECT_TRUE(attachments[10]->seen.empty());
    // The attachments die first here and take themselves out of the host.
    attachments.clear();
    EXPECT_TRUE(host.RunAttachments(1, nullptr));
}
