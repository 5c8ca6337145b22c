#pragma once

#include <cstdint>

class WAttachable;

// Runs before, or in place of, an action of the host it is attached to. It
// reacts to one message, or to every message when its message is
// kMsgAnyMessage, and tells the host whether to go on with its own action.
class WAttachment {
  public:
    WAttachment(std::int32_t message, bool runHost) : fMessage(message), fRunHost(runHost) {}
    WAttachment(const WAttachment&) = delete;
    WAttachment& operator=(const WAttachment&) = delete;
    // Takes itself out of its owner's table.
    virtual ~WAttachment();

    virtual void SetMessage(std::int32_t message) { fMessage = message; }
    virtual void SetRunHost(bool runHost) { fRunHost = runHost; }
    virtual void SetOwner(WAttachable* owner) { fOwner = owner; }
    // For a message of its own: runs RunSelf and answers the run-host flag.
    // Any other message: answers true and does nothing.
    virtual bool Run(std::int32_t message, void* parameter);
    virtual void RunSelf(std::int32_t message, void* parameter);

    WAttachable* GetOwner() const { return fOwner; }
    std::int32_t GetMessage() const { return fMessage; }
    bool GetRunHost() const { return fRunHost; }

  private:
    WAttachable* fOwner = nullptr;
    std::int32_t fMessage;
    bool fRunHost;
};
