#pragma once

#include <cstdint>

class WAttachment;

// Holds up to ten attachments and runs them on a message. An attachment added
// with ownership is deleted by this host; one added without it belongs to
// whoever made it, and the host never touches it when it dies.
class WAttachable {
  public:
    static constexpr std::int16_t kMaxAttachments = 10;

    WAttachable() = default;
    WAttachable(const WAttachable&) = delete;
    WAttachable& operator=(const WAttachable&) = delete;
    // Deletes the attachments it owns.
    virtual ~WAttachable();

    // Stores the attachment at the end of the table; with own, makes this host
    // its owner. The position is not used. A null attachment, or one that no
    // longer fits in the table, is not stored and gets no owner.
    virtual void AddAttachment(WAttachment* attachment, std::int32_t position, bool own);
    // Empties every slot that holds the attachment, and clears its owner when
    // that is this host.
    virtual void RemoveAttachment(WAttachment* attachment);
    // Deletes every attachment this host owns and empties the table.
    virtual void RemoveAllAttachments();
    // Runs every attachment in table order, without stopping at a false, and
    // answers whether all of them let the host go on.
    virtual bool RunAttachments(std::int32_t message, void* parameter);

    std::int16_t GetAttachmentCount() const { return fCount; }
    bool HasAttachment(const WAttachment* attachment) const;

  private:
    WAttachment* fAttachments[kMaxAttachments] = {};
    std::int16_t fCount = 0;
    // Which slots were filled with ownership. Only those are looked at when
    // the host dies, since an attachment it does not own may be gone already.
    bool fOwned[kMaxAttachments] = {};
};
