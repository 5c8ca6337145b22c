#include "foundation/Failures.h"
#include "foundation/ListMemory.h"
#include "foundation/WList.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

std::vector<std::int32_t> Items(const WList& list) {
    std::vector<std::int32_t> items;
    for (std::uint32_t i = 1; i <= list.GetCount(); ++i) {
        std::int32_t value = 0;
        EXPECT_TRUE(list.GetAt(i, &value));
        items.push_back(value);
    }
    return items;
}

void AppendValues(WList& list, std::initializer_list<std::int32_t> values) {
    for (std::int32_t v : values)
        list.InsertAt(1, kListLast, &v);
}

void* FailingAllocate(std::size_t) {
    return nullptr;
}

// Makes every list allocation fail while it lives.
struct AllocationFailure {
    AllocationFailure() : previous(SetListAllocateHook(FailingAllocate)) {}
    ~AllocationFailure() { SetListAllocateHook(previous); }
    ListAllocateFn previous;
};

} // namespace

TEST(WList, GrowthDoublesUpTo4096ThenAdds4096) {
    WList list(4);
    std::vector<std::uint32_t> capacities;
    for (std::int32_t i = 0; i < 1024; ++i) {
        list.InsertAt(1, kListLast, &i);
        if (capacities.empty() || capacities.back() != list.GetCapacity())
            capacities.push_back(list.GetCapacity());
    }
    EXPECT_EQ(capacities,
              (std::vector<std::uint32_t>{4, 8, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096}));
    std::int32_t more = 1024;
    list.InsertAt(1, kListLast, &more);
    EXPECT_EQ(list.GetCapacity(), 8192u);
    for (std::int32_t i = 1025; i < 2048; ++i)
        list.InsertAt(1, kListLast, &i);
    EXPECT_EQ(list.GetCapacity(), 8192u);
    more = 2048;
    list.InsertAt(1, kListLast, &more);
    EXPECT_EQ(list.GetCapacity(), 12288u);
    ASSERT_EQ(list.GetCount(), 2049u);
    for (std::uint32_t i = 1; i <= list.GetCount(); i += 97) {
        std::int32_t value = -1;
        ASSERT_TRUE(list.GetAt(i, &value));
        EXPECT_EQ(value, std::int32_t(i - 1));
    }
}

TEST(WList, GrowthBoundaryAndLargeRequests) {
    WList doubling(1);
    doubling.EnsureCapacity(4096);
    doubling.EnsureCapacity(4097);
    EXPECT_EQ(doubling.GetCapacity(), 8192u);

    WList adding(1);
    adding.EnsureCapacity(4097);
    EXPECT_EQ(adding.GetCapacity(), 4097u);
    adding.EnsureCapacity(4098);
    EXPECT_EQ(adding.GetCapacity(), 4097u + 4096u);
    // A request beyond the next step is taken as it is.
    adding.EnsureCapacity(50000);
    EXPECT_EQ(adding.GetCapacity(), 50000u);
    // A request that fits changes nothing.
    adding.EnsureCapacity(10);
    EXPECT_EQ(adding.GetCapacity(), 50000u);
}

TEST(WList, ShrinkHalvesOnceAndNeverBelow32ByteBlocks) {
    WList list(4);
    list.EnsureCapacity(64);
    AppendValues(list, {7});
    ASSERT_EQ(list.GetCapacity(), 64u);
    list.RemoveAt(1, 1);
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_EQ(list.GetCapacity(), 32u);

    AppendValues(list, {1});
    list.RemoveAt(1, 1);
    EXPECT_EQ(list.GetCapacity(), 16u);
    // A block under 32 bytes keeps its size.
    AppendValues(list, {1});
    list.RemoveAt(1, 1);
    EXPECT_EQ(list.GetCapacity(), 16u);

    WList big(4);
    big.EnsureCapacity(256);
    AppendValues(big, {1, 2, 3});
    big.RemoveAt(3, 1);
    EXPECT_EQ(big.GetCapacity(), 128u);

    // Exactly half in use is not below half: no shrink.
    WList half(4);
    half.EnsureCapacity(64);
    AppendValues(half, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    half.RemoveAt(1, 9);
    EXPECT_EQ(half.GetCapacity(), 64u);
    EXPECT_EQ(Items(half), (std::vector<std::int32_t>{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(WList, InsertAtFrontEndAndNowhere) {
    WList list(4);
    AppendValues(list, {3, 4});
    std::int32_t front = 1;
    list.InsertAt(2, 0, &front);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 1, 3, 4}));

    std::int32_t middle = 2;
    list.InsertAt(1, 3, &middle);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 1, 2, 3, 4}));

    std::int32_t last = 5;
    list.InsertAt(1, kListLast, &last);
    list.InsertAt(1, 999, &last);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 1, 2, 3, 4, 5, 5}));

    const std::uint32_t capacity = list.GetCapacity();
    list.InsertAt(0, 1, &last);
    list.InsertAt(0, kListLast, &last);
    EXPECT_EQ(list.GetCount(), 7u);
    EXPECT_EQ(list.GetCapacity(), capacity);

    WList empty(4);
    empty.InsertAt(0, kListLast, &last);
    EXPECT_EQ(empty.GetCapacity(), 0u);

    // A null item makes room and leaves the slots to be set.
    list.InsertAt(2, 1, nullptr);
    EXPECT_EQ(list.GetCount(), 9u);
    std::int32_t zero = 0;
    list.SetAt(1, &zero);
    list.SetAt(2, &zero);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{0, 0, 1, 1, 2, 3, 4, 5, 5}));
}

TEST(WList, RemoveAtClampsAndIgnoresInvalidPositions) {
    WList list(4);
    AppendValues(list, {1, 2, 3, 4, 5});
    list.RemoveAt(100, 3);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 2}));

    AppendValues(list, {3, 4, 5, 6});
    list.RemoveAt(2, 2);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 4, 5, 6}));
    list.RemoveAt(1, kListLast);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 4, 5}));
    list.RemoveAt(1, 0);
    list.RemoveAt(1, 4);
    list.RemoveAt(0xFFFFFFFF, 0xFFFFFFFF);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 4, 5}));
    list.RemoveAt(0xFFFFFFFF, 2);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1}));
}

TEST(WList, EmptyListAndInvalidPositionsTouchNothing) {
    WList list(4);
    std::int32_t value = 42;
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_FALSE(list.GetAt(1, &value));
    EXPECT_FALSE(list.GetAt(kListLast, &value));
    EXPECT_EQ(value, 42);
    EXPECT_EQ(list.IndexOfItem(&value), 0u);
    list.RemoveAt(1, 1);
    list.RemoveItem(&value);
    list.SetAt(1, &value);
    list.SetAt(kListLast, &value);
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_EQ(list.GetCapacity(), 0u);

    AppendValues(list, {1, 2});
    EXPECT_FALSE(list.GetAt(0, &value));
    EXPECT_FALSE(list.GetAt(3, &value));
    EXPECT_EQ(value, 42);
    list.SetAt(0, &value);
    list.SetAt(3, &value);
    list.SetAt(kListLast, &value);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 42}));

    // An emptied list keeps a block and still works.
    list.RemoveAt(2, 1);
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_GT(list.GetCapacity(), 0u);
    EXPECT_FALSE(list.GetAt(1, &value));
    AppendValues(list, {9});
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{9}));
}

TEST(WList, IndexOfItemComparesWholeItemsOfEverySize) {
    WList words(4);
    AppendValues(words, {5, 6, 5});
    std::int32_t six = 6, five = 5, seven = 7;
    EXPECT_EQ(words.IndexOfItem(&six), 2u);
    EXPECT_EQ(words.IndexOfItem(&five), 1u);
    EXPECT_EQ(words.IndexOfItem(&seven), 0u);
    words.RemoveItem(&five);
    EXPECT_EQ(Items(words), (std::vector<std::int32_t>{6, 5}));
    words.RemoveItem(&seven);
    EXPECT_EQ(words.GetCount(), 2u);

    WList shorts(2);
    for (std::int16_t v : {std::int16_t(1), std::int16_t(-1), std::int16_t(1)})
        shorts.InsertAt(1, kListLast, &v);
    std::int16_t minusOne = -1;
    EXPECT_EQ(shorts.IndexOfItem(&minusOne), 2u);

    // Items that differ only in their high bytes are different.
    WList longs(8);
    for (std::uint64_t v : {0x100000001ull, 0x200000001ull})
        longs.InsertAt(1, kListLast, &v);
    std::uint64_t second = 0x200000001ull, low = 1;
    EXPECT_EQ(longs.IndexOfItem(&second), 2u);
    EXPECT_EQ(longs.IndexOfItem(&low), 0u);
}

TEST(WList, FailedGrowthThrowsPlinAndLeavesTheList) {
    WList list(4);
    AppendValues(list, {1, 2, 3, 4});
    ASSERT_EQ(list.GetCapacity(), 16u);
    {
        AllocationFailure failure;
        std::int32_t five = 5;
        try {
            list.InsertAt(1, 1, &five);
            FAIL() << "no exception";
        } catch (std::int32_t code) {
            EXPECT_EQ(code, kFailPlin);
        }
        // Room that exists already needs no allocation.
        list.RemoveAt(1, 4);
        list.InsertAt(1, 1, &five);
    }
    EXPECT_EQ(list.GetCapacity(), 16u);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{5, 1, 2, 3}));

    // A request that does not fit in 32 bits is refused the same way.
    WList huge(8);
    EXPECT_THROW(huge.InsertAt(0x20000000, 1, nullptr), std::int32_t);
    EXPECT_EQ(huge.GetCount(), 0u);
}

TEST(WList, FailedShrinkThrowsPlinAndKeepsTheOldBlock) {
    WList list(4);
    list.EnsureCapacity(64);
    AppendValues(list, {1, 2, 3, 4, 5, 6, 7, 8});
    {
        AllocationFailure failure;
        EXPECT_THROW(list.RemoveAt(6, 2), std::int32_t);
    }
    EXPECT_EQ(list.GetCapacity(), 64u);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{1, 8}));
    list.RemoveAt(1, 1);
    EXPECT_EQ(list.GetCapacity(), 32u);
    EXPECT_EQ(Items(list), (std::vector<std::int32_t>{8}));
}
