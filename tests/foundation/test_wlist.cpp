#include "foundation/Failures.h"
#include "foundation/ListMemory.h"
#include "foundation/WList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Ints = std::vector<std::int32_t>;

Ints Items(const WList& list) {
    Ints items(list.GetCount());
    for (std::uint32_t i = 1; i <= list.GetCount(); ++i)
        EXPECT_TRUE(list.GetAt(i, &items[i - 1]));
    return items;
}

void Append(WList& list, Ints values) {
    for (std::int32_t v : values)
        list.InsertAt(1, kListLast, &v);
}

void* FailingAllocate(std::size_t) {
    return nullptr;
}

// Makes every list allocation fail while it lives.
struct AllocationFailure {
    ListAllocateFn previous = SetListAllocateHook(FailingAllocate);
    ~AllocationFailure() { SetListAllocateHook(previous); }
};

} // namespace

TEST(WList, GrowthDoublesUpTo4096BytesThenAdds4096) {
    WList list(4);
    std::vector<std::uint32_t> capacities;
    for (std::int32_t i = 0; i < 2049; ++i) {
        list.InsertAt(1, kListLast, &i);
        if (capacities.empty() || capacities.back() != list.GetCapacity())
            capacities.push_back(list.GetCapacity());
    }
    EXPECT_EQ(capacities, (std::vector<std::uint32_t>{4, 8, 16, 32, 64, 128, 256, 512, 1024, 2048,
                                                      4096, 8192, 12288}));
    const Ints items = Items(list);
    for (std::int32_t i = 0; i < 2049; ++i)
        ASSERT_EQ(items[i], i);

    // 4096 still doubles, 4097 does not; a request beyond the step is taken as is.
    WList bytes(1);
    bytes.EnsureCapacity(4097);
    bytes.EnsureCapacity(4098);
    EXPECT_EQ(bytes.GetCapacity(), 4097u + 4096u);
    bytes.EnsureCapacity(50000);
    bytes.EnsureCapacity(10);
    EXPECT_EQ(bytes.GetCapacity(), 50000u);
}

TEST(WList, ShrinkHalvesOnceAndLeavesSmallBlocks) {
    WList list(4);
    list.EnsureCapacity(64);
    Append(list, {7});
    list.RemoveAt(1, 1);
    EXPECT_EQ(list.GetCapacity(), 32u); // emptied, but keeps a block
    Append(list, {1});
    list.RemoveAt(1, 1);
    EXPECT_EQ(list.GetCapacity(), 16u);
    Append(list, {1});
    list.RemoveAt(1, 1);
    EXPECT_EQ(list.GetCapacity(), 16u); // under 32 bytes: never reduced

    WList big(4);
    big.EnsureCapacity(256);
    Append(big, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    big.RemoveAt(15, 2);
    EXPECT_EQ(big.GetCapacity(), 128u); // 4 of 256 bytes left, but one halving
    Append(big, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17});
    big.RemoveAt(1, 1);
    EXPECT_EQ(big.GetCapacity(), 128u); // exactly half in use is not below half
    EXPECT_EQ(Items(big), (Ints{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}));
}

TEST(WList, InsertAtFrontMiddleEndAndNowhere) {
    WList list(4);
    std::int32_t value = 9;
    list.InsertAt(0, kListLast, &value);
    EXPECT_EQ(list.GetCapacity(), 0u); // zero items: not even a block

    Append(list, {3, 5});
    std::int32_t one = 1, four = 4, six = 6;
    list.InsertAt(2, 0, &one);
    list.InsertAt(1, 4, &four);
    list.InsertAt(1, kListLast, &six);
    list.InsertAt(1, 999, &six);
    EXPECT_EQ(Items(list), (Ints{1, 1, 3, 4, 5, 6, 6}));

    const std::uint32_t capacity = list.GetCapacity();
    list.InsertAt(0, 1, &value);
    EXPECT_EQ(list.GetCapacity(), capacity);

    // A null item makes room and leaves the slots to be set.
    list.InsertAt(1, 2, nullptr);
    list.SetAt(2, &value);
    EXPECT_EQ(Items(list), (Ints{1, 9, 1, 3, 4, 5, 6, 6}));
}

TEST(WList, RemovalClampsAndInvalidPositionsTouchNothing) {
    WList list(4);
    std::int32_t value = 42;
    EXPECT_FALSE(list.GetAt(1, &value));
    EXPECT_EQ(list.IndexOfItem(&value), 0u);
    list.RemoveAt(1, 1);
    list.SetAt(kListLast, &value);
    EXPECT_EQ(list.GetCount(), 0u);

    Append(list, {1, 2, 3, 4, 5});
    list.RemoveAt(100, 3);
    EXPECT_EQ(Items(list), (Ints{1, 2}));
    Append(list, {3, 4, 5, 6});
    list.RemoveAt(2, 2);
    list.RemoveAt(1, kListLast);
    EXPECT_EQ(Items(list), (Ints{1, 4, 5}));
    for (std::uint32_t bad : {0u, 4u, 0xFFFFFFFFu}) {
        list.RemoveAt(1, bad);
        list.SetAt(bad, &value);
        EXPECT_FALSE(list.GetAt(bad, &value));
    }
    EXPECT_EQ(value, 42);
    list.SetAt(kListLast, &value);
    EXPECT_EQ(Items(list), (Ints{1, 4, 42}));
    list.RemoveAt(0xFFFFFFFF, 2);
    EXPECT_EQ(Items(list), (Ints{1}));
}

TEST(WList, IndexOfItemComparesWholeItems) {
    WList words(4);
    Append(words, {5, 6, 5});
    std::int32_t five = 5, seven = 7;
    EXPECT_EQ(words.IndexOfItem(&five), 1u);
    words.RemoveItem(&five);
    words.RemoveItem(&seven);
    EXPECT_EQ(Items(words), (Ints{6, 5}));

    // Items that differ only in their high bytes are different.
    WList longs(8);
    for (std::uint64_t v : {0x100000001ull, 0x200000001ull})
        longs.InsertAt(1, kListLast, &v);
    std::uint64_t second = 0x200000001ull, low = 1;
    EXPECT_EQ(longs.IndexOfItem(&second), 2u);
    EXPECT_EQ(longs.IndexOfItem(&low), 0u);
}

TEST(WList, FailedAllocationThrowsPlinAndLeavesAValidList) {
    WList list(4);
    list.EnsureCapacity(64);
    Append(list, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    {
        AllocationFailure failure;
        std::int32_t value = 0;
        try {
            list.InsertAt(1, 1, &value);
            ADD_FAILURE() << "growth did not throw";
        } catch (std::int32_t code) {
            EXPECT_EQ(code, kFailPlin);
        }
        EXPECT_EQ(list.GetCount(), 16u);
        // Shrinking throws after the count dropped and keeps the old block.
        EXPECT_THROW(list.RemoveAt(14, 2), std::int32_t);
    }
    EXPECT_EQ(list.GetCapacity(), 64u);
    EXPECT_EQ(Items(list), (Ints{1, 16}));
    list.RemoveAt(1, 1);
    EXPECT_EQ(list.GetCapacity(), 32u);

    // A request that does not fit in 32 bits is refused the same way.
    WList huge(8);
    EXPECT_THROW(huge.InsertAt(0x20000000, 1, nullptr), std::int32_t);
    EXPECT_EQ(huge.GetCount(), 0u);
}
