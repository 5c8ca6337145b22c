#pragma once

#include "foundation/KListEntry.h"
#include "foundation/WList.h"

#include <cstdint>

// A WList of pointers to KListEntry objects that it owns: when the list dies
// it deletes every entry it still holds. A holder of entries that someone else
// owns calls RemoveAll before the list dies.
//
// A list built with an explicit item size holds plain values (2, 4 or 8 bytes)
// and no entries: the entry operations do nothing on it and it never deletes
// anything.
class KList : public WList {
  public:
    KList();
    explicit KList(std::uint32_t itemSize);
    ~KList() override;

    // Inserts the pointer at the end.
    void Append(KListEntry* entry);
    // Inserts the pointer before position (0 or 1: at the front; above the
    // count: at the end).
    void InsertEntryAt(std::uint32_t position, KListEntry* entry);
    // The entry at position, or null for an invalid position.
    KListEntry* EntryAt(std::uint32_t position) const;
    // Takes the first occurrence of the pointer out without deleting it.
    void RemoveEntry(KListEntry* entry);

    // Applies the functoid from position 1 up to the count taken at the start.
    // The functoid must not remove entries.
    void ForEach(KListFunctoid& functoid, void* argument) const;
    // Applies the functoid from the count taken at the start down to 1. The
    // functoid may delete and remove the entry it is given.
    void ForEachBackward(KListFunctoid& functoid, void* argument) const;
    // The first entry, counting from 1, that the testoid accepts, or null.
    KListEntry* FirstThat(KListTestoid& testoid, std::intptr_t argument) const;

    // Empties the list without deleting any entry, one item at a time from
    // the end.
    void RemoveAll();
    // Takes each entry from the end, removes it and deletes it if it is not
    // null.
    void DeleteAll();

  private:
    bool HoldsEntries() const;
    void DeleteEntries(bool shrink);

    bool fOwnsEntries;
};
