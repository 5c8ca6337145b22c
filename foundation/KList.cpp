#include "foundation/KList.h"

KList::KList() : WList(sizeof(KListEntry*)), fOwnsEntries(true) {}

KList::KList(std::uint32_t itemSize) : WList(itemSize), fOwnsEntries(false) {}

KList::~KList() {
    // Shrinking the block on the way out would only allocate, and a failed
    // allocation must not escape a destructor.
    DeleteEntries(false);
}

bool KList::HoldsEntries() const {
    return GetItemSize() == sizeof(KListEntry*);
}

void KList::Append(KListEntry* entry) {
    InsertEntryAt(kListLast, entry);
}

void KList::InsertEntryAt(std::uint32_t position, KListEntry* entry) {
    if (HoldsEntries()) InsertAt(1, position, &entry);
}

KListEntry* KList::EntryAt(std::uint32_t position) const {
    KListEntry* entry = nullptr;
    if (HoldsEntries()) GetAt(position, &entry);
    return entry;
}

void KList::RemoveEntry(KListEntry* entry) {
    if (HoldsEntries()) RemoveItem(&entry);
}

void KList::ForEach(KListFunctoid& functoid, void* argument) const {
    if (!HoldsEntries()) return;
    const std::uint32_t count = GetCount();
    for (std::uint32_t position = 1; position <= count && position <= GetCount(); ++position)
        functoid.Apply(EntryAt(position), argument);
}

void KList::ForEachBackward(KListFunctoid& functoid, void* argument) const {
    if (!HoldsEntries()) return;
    for (std::uint32_t position = GetCount(); position >= 1; --position) {
        // A functoid that removed more than its own entry leaves positions
        // above the count; they hold nothing any more.
        if (position <= GetCount()) functoid.Apply(EntryAt(position), argument);
    }
}

KListEntry* KList::FirstThat(KListTestoid& testoid, std::intptr_t argument) const {
    if (!HoldsEntries()) return nullptr;
    for (std::uint32_t position = 1; position <= GetCount(); ++position) {
        KListEntry* entry = EntryAt(position);
        if (testoid.Test(entry, argument)) return entry;
    }
    return nullptr;
}

void KList::RemoveAll() {
    while (GetCount() > 0)
        RemoveAt(1, GetCount());
}

void KList::DeleteAll() {
    DeleteEntries(true);
}

void KList::DeleteEntries(bool shrink) {
    if (!fOwnsEntries || !HoldsEntries()) {
        if (shrink) RemoveAll();
        return;
    }
    while (GetCount() > 0) {
        KListEntry* entry = EntryAt(GetCount());
        if (shrink) {
            try {
                RemoveAt(1, GetCount());
            } catch (...) {
                // The entry is out of the list already; do not lose it.
                delete entry;
                throw;
            }
        } else {
            DropLast();
        }
        delete entry;
    }
}
