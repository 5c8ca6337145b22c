#include "foundation/KLinkedList.h"

KLinkedListEntry* KLinkedList::LinkedAt(std::uint32_t position) const {
    return static_cast<KLinkedListEntry*>(EntryAt(position));
}

void KLinkedList::AppendLinked(KLinkedListEntry* entry) {
    KLinkedListEntry* last = GetCount() > 0 ? LinkedAt(GetCount()) : nullptr;
    Append(entry);
    if (!entry) return;
    entry->fNext = nullptr;
    entry->fPrevious = last;
    if (last) last->fNext = entry;
}

void KLinkedList::InsertLinkedAt(std::uint32_t position, KLinkedListEntry* entry) {
    const std::uint32_t count = GetCount();
    if (position > count) {
        AppendLinked(entry);
        return;
    }
    if (position <= 1) {
        KLinkedListEntry* head = count > 0 ? LinkedAt(1) : nullptr;
        InsertEntryAt(1, entry);
        if (!entry) return;
        entry->fPrevious = nullptr;
        entry->fNext = head;
        if (head) head->fPrevious = entry;
        return;
    }
    KLinkedListEntry* before = LinkedAt(position - 1);
    KLinkedListEntry* after = LinkedAt(position);
    InsertEntryAt(position, entry);
    if (!entry) return;
    entry->fPrevious = before;
    entry->fNext = after;
    if (before) before->fNext = entry;
    if (after) after->fPrevious = entry;
}
