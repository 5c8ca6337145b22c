#include "foundation/WList.h"

#include "foundation/Failures.h"
#include "foundation/ListMemory.h"

#include <cstring>

namespace {

constexpr std::uint64_t kLinearGrowthStep = 4096;
constexpr std::uint64_t kMaxBytes = UINT32_MAX;

} // namespace

WList::WList(std::uint32_t itemSize) : fItemSize(itemSize) {}

WList::~WList() {
    ListFree(fStorage);
}

std::uint32_t WList::ValidPosition(std::uint32_t position) const {
    if (position == kListLast) return fCount;
    if (position == 0 || position > fCount) return 0;
    return position;
}

unsigned char* WList::ItemAddress(std::uint32_t position) const {
    return fStorage + std::size_t(position - 1) * fItemSize;
}

void WList::EnsureCapacity(std::uint32_t bytes) {
    if (bytes <= fCapacity) return;
    std::uint64_t newCapacity = fCapacity <= kLinearGrowthStep
                                    ? std::uint64_t(fCapacity) * 2
                                    : std::uint64_t(fCapacity) + kLinearGrowthStep;
    if (bytes > newCapacity) newCapacity = bytes;
    if (newCapacity > kMaxBytes) newCapacity = kMaxBytes;

    auto* block = static_cast<unsigned char*>(ListAllocate(std::size_t(newCapacity)));
    if (!block) ThrowPlin();
    if (fStorage) {
        std::memcpy(block, fStorage, fCapacity);
        ListFree(fStorage);
    }
    fStorage = block;
    fCapacity = std::uint32_t(newCapacity);
}

void WList::InsertAt(std::uint32_t howMany, std::uint32_t position, const void* item) {
    const std::uint32_t count = fCount;
    if (position > count) position = count + 1;
    if (howMany == 0 || fItemSize == 0) return;

    const std::uint64_t bytes = (std::uint64_t(count) + howMany) * fItemSize;
    // A list can neither hold more than 32 bits of bytes nor address more than
    // kListLast items.
    if (bytes > kMaxBytes || std::uint64_t(count) + howMany >= kListLast) ThrowPlin();

    EnsureCapacity(std::uint32_t(bytes));
    fCount = count + howMany;

    if (position <= count) {
        if (position == 0) position = 1;
        std::memmove(ItemAddress(position + howMany), ItemAddress(position),
                     std::size_t(count - position + 1) * fItemSize);
    }
    if (!item) return;
    unsigned char* slot = ItemAddress(position);
    for (std::uint32_t i = 0; i < howMany; ++i, slot += fItemSize)
        std::memcpy(slot, item, fItemSize);
}

bool WList::GetAt(std::uint32_t position, void* destination) const {
    position = ValidPosition(position);
    if (position == 0 || !destination) return false;
    std::memcpy(destination, ItemAddress(position), fItemSize);
    return true;
}

void WList::RemoveAt(std::uint32_t howMany, std::uint32_t position) {
    position = ValidPosition(position);
    if (position == 0) return;
    const std::uint32_t count = fCount;
    if (std::uint64_t(position) + howMany > count) {
        howMany = count - position + 1;
    } else {
        std::memmove(ItemAddress(position), ItemAddress(position + howMany),
                     std::size_t(count - position - howMany + 1) * fItemSize);
    }
    fCount = count - howMany;
    ShrinkToFit();
}

void WList::ShrinkToFit() {
    const std::uint64_t inUse = std::uint64_t(fCount) * fItemSize;
    const std::uint32_t half = fCapacity / 2;
    if (inUse >= fCapacity || inUse >= half || half < 16) return;

    auto* block = static_cast<unsigned char*>(ListAllocate(half));
    if (!block) ThrowPlin();
    std::memcpy(block, fStorage, std::size_t(inUse));
    ListFree(fStorage);
    fStorage = block;
    fCapacity = half;
}

std::uint32_t WList::IndexOfItem(const void* item) const {
    if (!item) return 0;
    const unsigned char* slot = fStorage;
    if (fItemSize == 4) {
        std::uint32_t wanted;
        std::memcpy(&wanted, item, 4);
        for (std::uint32_t i = 1; i <= fCount; ++i, slot += 4) {
            std::uint32_t word;
            std::memcpy(&word, slot, 4);
            if (word == wanted) return i;
        }
        return 0;
    }
    for (std::uint32_t i = 1; i <= fCount; ++i, slot += fItemSize)
        if (std::memcmp(slot, item, fItemSize) == 0) return i;
    return 0;
}

void WList::RemoveItem(const void* item) {
    const std::uint32_t position = IndexOfItem(item);
    if (position != 0) RemoveAt(1, position);
}

void WList::SetAt(std::uint32_t position, const void* item) {
    position = ValidPosition(position);
    if (position == 0 || !item) return;
    std::memmove(ItemAddress(position), item, fItemSize);
}
