#pragma once

#include <cstdint>

class WListener;

// Sends a message number and one pointer to every registered WListener.
//
// The broadcaster's table of listeners and each listener's table of
// broadcasters mirror each other, so that neither end keeps a dangling pointer
// whichever of the two dies first. Tables hold ten slots and only grow: a slot
// emptied by removal stays empty and keeps its place.
class WBroadcaster {
  public:
    static constexpr std::int16_t kMaxListeners = 10;

    WBroadcaster() = default;
    WBroadcaster(const WBroadcaster&) = delete;
    WBroadcaster& operator=(const WBroadcaster&) = delete;
    // Sends kMsgBroadcasterDied with itself as the parameter while its table
    // is whole, then takes itself out of every listener's table.
    virtual ~WBroadcaster();

    // Registers a listener once; a listener already in the table, a null one,
    // or one that no longer fits in either table is ignored.
    void AddListener(WListener* listener);
    // Empties the slots of both tables that join this pair.
    void RemoveListener(WListener* listener);
    // Calls HearMessage on every listening listener in order of registration.
    // A listener must not add or remove listeners of this broadcaster from
    // within the call.
    void Broadcast(std::int32_t message, void* parameter);

    bool HasListener(const WListener* listener) const;
    bool IsBroadcasting() const { return fBroadcasting; }
    void SetBroadcasting(bool broadcasting) { fBroadcasting = broadcasting; }

  private:
    WListener* fListeners[kMaxListeners] = {};
    std::int16_t fCount = 0;
    bool fBroadcasting = true;
};

class KBroadcaster : public WBroadcaster {};
