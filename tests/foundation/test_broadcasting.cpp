#include "foundation/Messages.h"
#include "foundation/WBroadcaster.h"
#include "foundation/WListener.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

struct Heard {
    std::string who;
    std::int32_t message;
    void* parameter;
};

// Writes what it hears into a log shared by several listeners, so that the
// order of calls across listeners can be checked.
class LoggingListener : public KListener {
  public:
    LoggingListener(std::string name, std::vector<Heard>* log)
        : fName(std::move(name)), fLog(log) {}
    void HearMessage(std::int32_t message, void* parameter) override {
        fLog->push_back({fName, message, parameter});
    }

  private:
    std::string fName;
    std::vector<Heard>* fLog;
};

std::vector<std::string> Who(const std::vector<Heard>& log) {
    std::vector<std::string> who;
    for (const Heard& h : log)
        who.push_back(h.who);
    return who;
}

} // namespace

TEST(Broadcasting, ListenersHearInOrderOfRegistrationOnce) {
    std::vector<Heard> log;
    KBroadcaster broadcaster;
    LoggingListener a("a", &log), b("b", &log), c("c", &log);
    broadcaster.AddListener(&b);
    broadcaster.AddListener(&a);
    broadcaster.AddListener(&b);
    broadcaster.AddListener(nullptr);
    broadcaster.AddListener(&c);
    EXPECT_TRUE(broadcaster.HasListener(&a));
    EXPECT_TRUE(a.IsListeningTo(&broadcaster));

    int value = 5;
    broadcaster.Broadcast(kMsgTextPositionChanged, &value);
    EXPECT_EQ(Who(log), (std::vector<std::string>{"b", "a", "c"}));
    for (const Heard& h : log) {
        EXPECT_EQ(h.message, kMsgTextPositionChanged);
        EXPECT_EQ(h.parameter, &value);
    }
}

TEST(Broadcasting, RemovedListenerLeavesAnEmptySlotThatStillCounts) {
    std::vector<Heard> log;
    KBroadcaster broadcaster;
    LoggingListener a("a", &log), b("b", &log), c("c", &log);
    broadcaster.AddListener(&a);
    broadcaster.AddListener(&b);
    broadcaster.AddListener(&c);
    broadcaster.RemoveListener(&b);
    EXPECT_FALSE(broadcaster.HasListener(&b));
    EXPECT_FALSE(b.IsListeningTo(&broadcaster));
    broadcaster.Broadcast(kMsgLightPlaced, nullptr);
    EXPECT_EQ(Who(log), (std::vector<std::string>{"a", "c"}));

    // The emptied slot is not reused: after ten registrations in all the
    // table is full, on both sides.
    std::vector<std::unique_ptr<LoggingListener>> more;
    for (int i = 0; i < 7; ++i) {
        more.push_back(std::make_unique<LoggingListener>("m" + std::to_string(i), &log));
        broadcaster.AddListener(more.back().get());
    }
    EXPECT_TRUE(broadcaster.HasListener(more[6].get()));
    broadcaster.AddListener(&b);
    EXPECT_FALSE(broadcaster.HasListener(&b));
    EXPECT_FALSE(b.IsListeningTo(&broadcaster));
}

TEST(Broadcasting, FlagsSilenceBroadcasterOrListener) {
    std::vector<Heard> log;
    KBroadcaster broadcaster;
    LoggingListener a("a", &log), b("b", &log);
    broadcaster.AddListener(&a);
    broadcaster.AddListener(&b);
    a.SetListening(false);
    broadcaster.Broadcast(1, nullptr);
    EXPECT_EQ(Who(log), (std::vector<std::string>{"b"}));
    broadcaster.SetBroadcasting(false);
    broadcaster.Broadcast(2, nullptr);
    EXPECT_EQ(log.size(), 1u);
}

TEST(Broadcasting, BroadcasterDyingFirstSays202AndLeavesNoTrace) {
    std::vector<Heard> log;
    auto listener = std::make_unique<LoggingListener>("a", &log);
    auto other = std::make_unique<LoggingListener>("b", &log);
    auto broadcaster = std::make_unique<KBroadcaster>();
    KBroadcaster survivor;
    broadcaster->AddListener(listener.get());
    broadcaster->AddListener(other.get());
    survivor.AddListener(listener.get());

    void* const dying = static_cast<WBroadcaster*>(broadcaster.get());
    broadcaster.reset();
    ASSERT_EQ(log.size(), 2u);
    EXPECT_EQ(log[0].message, kMsgBroadcasterDied);
    EXPECT_EQ(log[0].parameter, dying);
    EXPECT_EQ(log[1].who, "b");
    EXPECT_FALSE(listener->IsListeningTo(static_cast<WBroadcaster*>(dying)));

    // The listener still hears the broadcaster that is alive, and its death
    // touches only that one.
    survivor.Broadcast(3, nullptr);
    EXPECT_EQ(log.back().message, 3);
    WListener* const listenerAddress = listener.get();
    listener.reset();
    EXPECT_FALSE(survivor.HasListener(listenerAddress));
    log.clear();
    survivor.Broadcast(4, nullptr);
    EXPECT_TRUE(log.empty());
}

TEST(Broadcasting, ListenerDyingFirstIsNoLongerCalled) {
    std::vector<Heard> log;
    KBroadcaster broadcaster;
    LoggingListener kept("kept", &log);
    auto gone = std::make_unique<LoggingListener>("gone", &log);
    WListener* const goneAddress = gone.get();
    broadcaster.AddListener(gone.get());
    broadcaster.AddListener(&kept);
    gone.reset();
    EXPECT_FALSE(broadcaster.HasListener(goneAddress));
    broadcaster.Broadcast(kMsgViewMatrixChanged, nullptr);
    EXPECT_EQ(Who(log), (std::vector<std::string>{"kept"}));
}

TEST(Broadcasting, ListenerMayDeleteItselfWhileHearing) {
    struct SelfDeleting : KListener {
        explicit SelfDeleting(int* heard) : heard(heard) {}
        void HearMessage(std::int32_t, void*) override {
            ++*heard;
            delete this;
        }
        int* heard;
    };
    std::vector<Heard> log;
    int heard = 0;
    KBroadcaster broadcaster;
    LoggingListener after("after", &log);
    broadcaster.AddListener(new SelfDeleting(&heard));
    broadcaster.AddListener(&after);
    broadcaster.Broadcast(1, nullptr);
    broadcaster.Broadcast(2, nullptr);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(log.size(), 2u);
}

TEST(Broadcasting, ListenerTableHoldsTen) {
    std::vector<Heard> log;
    LoggingListener listener("l", &log);
    KBroadcaster broadcasters[11];
    for (KBroadcaster& b : broadcasters)
        b.AddListener(&listener);
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(listener.IsListeningTo(&broadcasters[i])) << i;
    EXPECT_FALSE(listener.IsListeningTo(&broadcasters[10]));
    EXPECT_FALSE(broadcasters[10].HasListener(&listener));
}
