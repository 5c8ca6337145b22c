#pragma once

#include <cstdint>

// The base of everything a KList owns: the list deletes its entries through
// this virtual destructor.
class KListEntry {
  public:
    virtual ~KListEntry() = default;
};

// Does something to each entry of a list (KList::ForEach). A concrete functoid
// is a small stack object; the result of Apply is ignored.
class KListFunctoid {
  public:
    virtual void Apply(KListEntry* entry, void* argument) = 0;

  protected:
    ~KListFunctoid() = default;
};

// Tells whether an entry matches (KList::FirstThat). The argument is a value:
// an id, or a pointer to compare with.
class KListTestoid {
  public:
    virtual bool Test(KListEntry* entry, std::intptr_t argument) = 0;

  protected:
    ~KListTestoid() = default;
};
