#include "foundation/WBroadcaster.h"

#include "foundation/Messages.h"
#include "foundation/WListener.h"

WBroadcaster::~WBroadcaster() {
    Broadcast(kMsgBroadcasterDied, this);
    for (std::int16_t i = 0; i < fCount; ++i) {
        if (fListeners[i]) fListeners[i]->ForgetBroadcaster(this);
        fListeners[i] = nullptr;
    }
}

bool WBroadcaster::HasListener(const WListener* listener) const {
    if (!listener) return false;
    for (std::int16_t i = 0; i < fCount; ++i)
        if (fListeners[i] == listener) return true;
    return false;
}

void WBroadcaster::AddListener(WListener* listener) {
    if (!listener || HasListener(listener) || fCount >= kMaxListeners) return;
    if (!listener->RememberBroadcaster(this)) return;
    fListeners[fCount++] = listener;
}

void WBroadcaster::RemoveListener(WListener* listener) {
    if (!listener) return;
    for (std::int16_t i = 0; i < fCount; ++i)
        if (fListeners[i] == listener) fListeners[i] = nullptr;
    listener->ForgetBroadcaster(this);
}

void WBroadcaster::Broadcast(std::int32_t message, void* parameter) {
    if (!fBroadcasting) return;
    for (std::int16_t i = 0; i < fCount; ++i) {
        // Read the slot afresh: a listener that died during an earlier call
        // has emptied it.
        WListener* listener = fListeners[i];
        if (listener && listener->IsListening()) listener->HearMessage(message, parameter);
    }
}
