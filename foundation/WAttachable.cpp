#include "foundation/WAttachable.h"

#include "foundation/WAttachment.h"

WAttachable::~WAttachable() {
    WAttachable::RemoveAllAttachments();
}

bool WAttachable::HasAttachment(const WAttachment* attachment) const {
    if (!attachment) return false;
    for (std::int16_t i = 0; i < fCount; ++i)
        if (fAttachments[i] == attachment) return true;
    return false;
}

void WAttachable::AddAttachment(WAttachment* attachment, std::int32_t, bool own) {
    if (!attachment || fCount >= kMaxAttachments) return;
    fOwned[fCount] = own;
    fAttachments[fCount++] = attachment;
    if (own) attachment->SetOwner(this);
}

void WAttachable::RemoveAttachment(WAttachment* attachment) {
    if (!attachment) return;
    for (std::int16_t i = 0; i < fCount; ++i) {
        if (fAttachments[i] != attachment) continue;
        fAttachments[i] = nullptr;
        fOwned[i] = false;
    }
    if (attachment->GetOwner() == this) attachment->SetOwner(nullptr);
}

void WAttachable::RemoveAllAttachments() {
    for (std::int16_t i = 0; i < fCount; ++i) {
        WAttachment* attachment = fAttachments[i];
        const bool owned = fOwned[i];
        fAttachments[i] = nullptr;
        fOwned[i] = false;
        // Deleting it calls RemoveAttachment, which empties any other slot
        // that holds it.
        if (attachment && owned && attachment->GetOwner() == this) delete attachment;
    }
    fCount = 0;
}

bool WAttachable::RunAttachments(std::int32_t message, void* parameter) {
    bool runHost = true;
    for (std::int16_t i = 0; i < fCount; ++i) {
        WAttachment* attachment = fAttachments[i];
        if (attachment && !attachment->Run(message, parameter)) runHost = false;
    }
    return runHost;
}
