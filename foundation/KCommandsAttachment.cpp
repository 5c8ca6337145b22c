#include "foundation/KCommandsAttachment.h"

#include "foundation/Messages.h"

KCommandsAttachment::KCommandsAttachment() : WAttachment(kMsgAnyMessage, true) {}

bool KCommandsAttachment::Run(std::int32_t message, void* parameter) {
    if (message == kMsgCommandStatus) return true;
    return !HandleCommand(message, parameter);
}

bool KCommandsAttachment::QueryCommandStatus(std::int32_t, bool*, bool*, std::uint16_t*, char*) {
    return false;
}
