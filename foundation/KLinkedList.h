#pragma once

#include "foundation/KList.h"

// An entry that also knows its neighbours in a KLinkedList. Both pointers are
// null in an entry that is not linked.
class KLinkedListEntry : public KListEntry {
  public:
    KLinkedListEntry* fNext = nullptr;
    KLinkedListEntry* fPrevious = nullptr;
};

// A KList of KLinkedListEntry objects whose neighbour pointers follow the
// order of the array as entries are appended and inserted.
class KLinkedList : public KList {
  public:
    // Appends, and joins the entry to the one that was last.
    virtual void AppendLinked(KLinkedListEntry* entry);
    // Position 0 or 1 puts the entry at the front, joined to the old head; a
    // position up to the count splices it between its two neighbours; beyond
    // the count it appends.
    virtual void InsertLinkedAt(std::uint32_t position, KLinkedListEntry* entry);

  private:
    KLinkedListEntry* LinkedAt(std::uint32_t position) const;
};
