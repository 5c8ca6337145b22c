#include "foundation/Messages.h"
#include "foundation/WBroadcaster.h"
#include "foundation/WListener.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

struct Heard {
    char who;
    std::int32_t message;
    void* parameter;
};

// Writes what it hears into a log shared by several listeners, so that the
// order across listeners shows.
struct LoggingListener : KListener {
    LoggingListener(char name, std::vector<Heard>* log) : name(name), log(log) {}
    void HearMessage(std::int32_t message, void* parameter) override {
        log->push_back({name, message, parameter});
    }
    char name;
    std::vector<Heard>* log;
};

std::string Who(const std::vector<Heard>& log) {
    std::string who;
    for (const Heard& h : log)
        who += h.who;
    return who;
}

} // namespace

TEST(Broadcasting, ListenersHearOnceInOrderAndRemovedSlotsStayEmpty) {
    std::vector<Heard> log;
    KBroadcaster broadcaster;
    LoggingListener a('a', &log), b('b', &log), c('c', &log);
    broadcaster.AddListener(&b);
    broadcaster.AddListener(&a);
    broadcaster.AddListener(&b);
    broadcaster.AddListener(&c);
    int value = 5;
    broadcaster.Broadcast(kMsgTextPositionChanged, &value);
    EXPECT_EQ(Who(log), "bac");
    EXPECT_EQ(log[0].message, kMsgTextPositionChanged);
    EXPECT_EQ(log[0].parameter, &value);

    broadcaster.RemoveListener(&a);
    EXPECT_FALSE(a.IsListeningTo(&broadcaster));
    log.clear();
    broadcaster.Broadcast(1, nullptr);
    EXPECT_EQ(Who(log), "bc");
    // Either side's flag silences it.
    c.SetListening(false);
    broadcaster.Broadcast(1, nullptr);
    broadcaster.SetBroadcasting(false);
    broadcaster.Broadcast(2, nullptr);
    EXPECT_EQ(Who(log), "bcb");

    // The emptied slot still counts: seven more fill the table of ten.
    std::vector<std::unique_ptr<LoggingListener>> more;
    for (int i = 0; i < 7; ++i) {
        more.push_back(std::make_unique<LoggingListener>('m', &log));
        broadcaster.AddListener(more.back().get());
    }
    broadcaster.AddListener(&a);
    EXPECT_TRUE(broadcaster.HasListener(more.back().get()));
    EXPECT_FALSE(broadcaster.HasListener(&a));
    EXPECT_FALSE(a.IsListeningTo(&broadcaster));
}

TEST(Broadcasting, BroadcasterDyingFirstSays202AndLeavesNoTrace) {
    std::vector<Heard> log;
    auto listener = std::make_unique<LoggingListener>('a', &log);
    auto broadcaster = std::make_unique<KBroadcaster>();
    KBroadcaster survivor;
    broadcaster->AddListener(listener.get());
    survivor.AddListener(listener.get());

    WBroadcaster* const dying = broadcaster.get();
    broadcaster.reset();
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].message, kMsgBroadcasterDied);
    EXPECT_EQ(log[0].parameter, dying);
    EXPECT_FALSE(listener->IsListeningTo(dying));

    // The listener's own death now touches only the broadcaster still alive.
    WListener* const gone = listener.get();
    listener.reset();
    EXPECT_FALSE(survivor.HasListener(gone));
    survivor.Broadcast(3, nullptr);
    EXPECT_EQ(log.size(), 1u);
}

TEST(Broadcasting, ListenerDyingFirstOrDuringABroadcastIsNotCalledAgain) {
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
    auto gone = std::make_unique<LoggingListener>('g', &log);
    LoggingListener kept('k', &log);
    broadcaster.AddListener(gone.get());
    broadcaster.AddListener(new SelfDeleting(&heard));
    broadcaster.AddListener(&kept);
    gone.reset();
    broadcaster.Broadcast(1, nullptr);
    broadcaster.Broadcast(2, nullptr);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(Who(log), "kk");
}

TEST(Broadcasting, ListenerTableHoldsTen) {
    std::vector<Heard> log;
    LoggingListener listener('l', &log);
    KBroadcaster broadcasters[11];
    for (KBroadcaster& b : broadcasters)
        b.AddListener(&listener);
    EXPECT_TRUE(listener.IsListeningTo(&broadcasters[9]));
    EXPECT_FALSE(listener.IsListeningTo(&broadcasters[10]));
    EXPECT_FALSE(broadcasters[10].HasListener(&listener));
}
