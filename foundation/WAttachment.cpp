#include "foundation/WAttachment.h"

#include "foundation/Messages.h"
#include "foundation/WAttachable.h"

WAttachment::~WAttachment() {
    if (fOwner) fOwner->RemoveAttachment(this);
}

bool WAttachment::Run(std::int32_t message, void* parameter) {
    if (message != fMessage && fMessage != kMsgAnyMessage) return true;
    RunSelf(message, parameter);
    return fRunHost;
}

void WAttachment::RunSelf(std::int32_t, void*) {}
