#pragma once

#include <cstdint>

// A growable array of same-sized items, addressed from 1. Items are moved with
// raw byte copies, so they must be plain values or pointers.
//
// Position 0 is no position. kListLast stands for the last item wherever a
// position names an existing item (GetAt, SetAt, RemoveAt); InsertAt treats it
// as beyond the end, which appends.
//
// Storage grows by doubling up to 4096 bytes and by 4096 bytes beyond, and
// halves at most once per removal when less than half of it is in use. When a
// block cannot be got the list throws kFailPlin; a failed growth leaves the
// list as it was, a failed shrink leaves it valid with its old block.
inline constexpr std::uint32_t kListLast = 0x7FFFFFFF;

class WList {
  public:
    explicit WList(std::uint32_t itemSize);
    WList(const WList&) = delete;
    WList& operator=(const WList&) = delete;

    // Makes room for howMany items before position and fills each new slot
    // with a byte copy of *item, or leaves the slots as they are when item is
    // null. A position above the count appends; 0 inserts at the front.
    virtual void InsertAt(std::uint32_t howMany, std::uint32_t position, const void* item);
    // Copies one item into destination; false, and destination untouched, for
    // an invalid position.
    virtual bool GetAt(std::uint32_t position, void* destination) const;
    // Removes up to howMany items starting at position; nothing for an
    // invalid position.
    virtual void RemoveAt(std::uint32_t howMany, std::uint32_t position);
    // Position of the first item equal byte for byte to *item, or 0.
    virtual std::uint32_t IndexOfItem(const void* item) const;
    // Removes the first item equal to *item; nothing when there is none.
    virtual void RemoveItem(const void* item);
    // Overwrites one item; nothing for an invalid position.
    virtual void SetAt(std::uint32_t position, const void* item);
    virtual ~WList();
    // Makes the storage hold at least bytes.
    virtual void EnsureCapacity(std::uint32_t bytes);

    std::uint32_t GetCount() const { return fCount; }
    std::uint32_t GetItemSize() const { return fItemSize; }
    // Size of the storage block in bytes.
    std::uint32_t GetCapacity() const { return fCapacity; }

  protected:
    // Forgets the last item and keeps the block as it is: a removal that
    // cannot fail, for use on the way to destruction.
    void DropLast() {
        if (fCount > 0) --fCount;
    }

  private:
    // Maps kListLast to the count; 0 for a position that names no item.
    std::uint32_t ValidPosition(std::uint32_t position) const;
    unsigned char* ItemAddress(std::uint32_t position) const;
    void ShrinkToFit();

    std::uint32_t fItemSize;
    std::uint32_t fCount = 0;
    unsigned char* fStorage = nullptr;
    std::uint32_t fCapacity = 0;
};
