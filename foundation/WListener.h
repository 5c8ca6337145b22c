#pragma once

#include <cstdint>

class WBroadcaster;

// Hears the messages of the broadcasters it is registered with. Its table of
// broadcasters mirrors theirs (see WBroadcaster); a listener that dies takes
// itself out of each broadcaster in its table.
class WListener {
  public:
    static constexpr std::int16_t kMaxBroadcasters = 10;

    WListener() = default;
    WListener(const WListener&) = delete;
    WListener& operator=(const WListener&) = delete;
    virtual ~WListener();
    virtual void HearMessage(std::int32_t message, void* parameter) = 0;

    bool IsListeningTo(const WBroadcaster* broadcaster) const;
    // A listener that is not listening is skipped by every broadcast.
    bool IsListening() const { return fListening; }
    void SetListening(bool listening) { fListening = listening; }

  private:
    friend class WBroadcaster;
    // Stores the broadcaster in the next slot; false when the table is full.
    bool RememberBroadcaster(WBroadcaster* broadcaster);
    // Empties every slot that holds the broadcaster.
    void ForgetBroadcaster(const WBroadcaster* broadcaster);

    bool fListening = true;
    std::int16_t fCount = 0;
    WBroadcaster* fBroadcasters[kMaxBroadcasters] = {};
};

class KListener : public WListener {};
