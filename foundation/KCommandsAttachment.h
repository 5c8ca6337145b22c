#pragma once

#include "foundation/WAttachment.h"

#include <cstdint>

// An attachment that takes commands on behalf of its host: every message other
// than kMsgCommandStatus goes to HandleCommand, and a handled command stops the
// host from running it too.
class KCommandsAttachment : public WAttachment {
  public:
    KCommandsAttachment();

    // kMsgCommandStatus: true at once. Any other message: false when
    // HandleCommand took it, true when it did not.
    bool Run(std::int32_t message, void* parameter) override;
    // Says whether a command is available, and how to mark and name it in a
    // menu. Default: no answer.
    virtual bool QueryCommandStatus(std::int32_t command, bool* enabled, bool* usesMark,
                                    std::uint16_t* mark, char* name);
    // True when the command was dealt with.
    virtual bool HandleCommand(std::int32_t message, void* parameter) = 0;
};
