#include "foundation/WListener.h"

#include "foundation/WBroadcaster.h"

WListener::~WListener() {
    for (std::int16_t i = 0; i < fCount; ++i) {
        WBroadcaster* broadcaster = fBroadcasters[i];
        if (broadcaster) broadcaster->RemoveListener(this);
    }
}

bool WListener::IsListeningTo(const WBroadcaster* broadcaster) const {
    if (!broadcaster) return false;
    for (std::int16_t i = 0; i < fCount; ++i)
        if (fBroadcasters[i] == broadcaster) return true;
    return false;
}

bool WListener::RememberBroadcaster(WBroadcaster* broadcaster) {
    if (fCount >= kMaxBroadcasters) return false;
    fBroadcasters[fCount++] = broadcaster;
    return true;
}

void WListener::ForgetBroadcaster(const WBroadcaster* broadcaster) {
    for (std::int16_t i = 0; i < fCount; ++i)
        if (fBroadcasters[i] == broadcaster) fBroadcasters[i] = nullptr;
}
