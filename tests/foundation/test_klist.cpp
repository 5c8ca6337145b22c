#include "foundation/Failures.h"
#include "foundation/KList.h"
#include "foundation/ListMemory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

// An entry that counts its own destruction.
struct CountedEntry : KListEntry {
    CountedEntry(int id, int* deaths) : id(id), deaths(deaths) {}
    ~CountedEntry() override { ++*deaths; }
    int id;
    int* deaths;
};

std::vector<int> Ids(const KList& list) {
    std::vector<int> ids;
    for (std::uint32_t i = 1; i <= list.GetCount(); ++i) {
        auto* entry = static_cast<CountedEntry*>(list.EntryAt(i));
        ids.push_back(entry ? entry->id : -1);
    }
    return ids;
}

struct collect_functoid : KListFunctoid {
    void Apply(KListEntry* entry, void* argument) override {
        static_cast<std::vector<int>*>(argument)->push_back(static_cast<CountedEntry*>(entry)->id);
    }
};

// Deletes every entry whose id is odd, as the scene deletes selected objects.
struct delete_odd_functoid : KListFunctoid {
    explicit delete_odd_functoid(KList& list) : list(list) {}
    void Apply(KListEntry* entry, void* argument) override {
        auto* counted = static_cast<CountedEntry*>(entry);
        static_cast<std::vector<int>*>(argument)->push_back(counted->id);
        if (counted->id % 2 == 0) return;
        list.RemoveEntry(entry);
        delete entry;
    }
    KList& list;
};

struct id_testoid : KListTestoid {
    bool Test(KListEntry* entry, std::intptr_t argument) override {
        ++calls;
        return entry && static_cast<CountedEntry*>(entry)->id == argument;
    }
    int calls = 0;
};

void* FailingAllocate(std::size_t) {
    return nullptr;
}

} // namespace

TEST(KList, EmptyListAnswersNothing) {
    KList list;
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_EQ(list.EntryAt(1), nullptr);
    EXPECT_EQ(list.EntryAt(0), nullptr);
    std::vector<int> seen;
    collect_functoid collect;
    list.ForEach(collect, &seen);
    list.ForEachBackward(collect, &seen);
    EXPECT_TRUE(seen.empty());
    id_testoid test;
    EXPECT_EQ(list.FirstThat(test, 1), nullptr);
    EXPECT_EQ(test.calls, 0);
    list.RemoveAll();
    list.DeleteAll();
    EXPECT_EQ(list.GetCount(), 0u);
}

TEST(KList, EntriesKeepTheirOrderAndAreFound) {
    int deaths = 0;
    KList list;
    auto* a = new CountedEntry(1, &deaths);
    auto* b = new CountedEntry(2, &deaths);
    auto* c = new CountedEntry(3, &deaths);
    list.Append(b);
    list.InsertEntryAt(0, a);
    list.InsertEntryAt(kListLast, c);
    EXPECT_EQ(Ids(list), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(list.EntryAt(kListLast), c);
    EXPECT_EQ(list.EntryAt(4), nullptr);

    std::vector<int> forward, backward;
    collect_functoid collect;
    list.ForEach(collect, &forward);
    list.ForEachBackward(collect, &backward);
    EXPECT_EQ(forward, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(backward, (std::vector<int>{3, 2, 1}));

    id_testoid test;
    EXPECT_EQ(list.FirstThat(test, 2), b);
    EXPECT_EQ(test.calls, 2);
    EXPECT_EQ(list.FirstThat(test, 9), nullptr);

    list.RemoveEntry(b);
    list.RemoveEntry(b);
    EXPECT_EQ(Ids(list), (std::vector<int>{1, 3}));
    delete b;
    EXPECT_EQ(deaths, 1);
}

TEST(KList, ForEachBackwardToleratesDeletingTheCurrentEntry) {
    int deaths = 0;
    KList list;
    for (int id = 1; id <= 7; ++id)
        list.Append(new CountedEntry(id, &deaths));
    std::vector<int> seen;
    delete_odd_functoid deleteOdd(list);
    list.ForEachBackward(deleteOdd, &seen);
    EXPECT_EQ(seen, (std::vector<int>{7, 6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(deaths, 4);
    EXPECT_EQ(Ids(list), (std::vector<int>{2, 4, 6}));
}

TEST(KList, DeleteAllOwnsAndRemoveAllDoesNot) {
    int deaths = 0;
    std::vector<CountedEntry*> kept;
    {
        KList list;
        for (int id = 1; id <= 5; ++id) {
            kept.push_back(new CountedEntry(id, &deaths));
            list.Append(kept.back());
        }
        list.Append(nullptr);
        list.RemoveAll();
        EXPECT_EQ(list.GetCount(), 0u);
        EXPECT_EQ(deaths, 0);

        for (CountedEntry* entry : kept)
            list.Append(entry);
        list.Append(nullptr);
        list.DeleteAll();
        EXPECT_EQ(list.GetCount(), 0u);
        EXPECT_EQ(deaths, 5);

        // Whatever the list still holds when it dies is deleted with it.
        list.Append(new CountedEntry(6, &deaths));
        list.Append(new CountedEntry(7, &deaths));
    }
    EXPECT_EQ(deaths, 7);
}

TEST(KList, DeleteAllGoesFromTheEnd) {
    std::vector<int> order;
    struct Ordered : KListEntry {
        Ordered(int id, std::vector<int>* order) : id(id), order(order) {}
        ~Ordered() override { order->push_back(id); }
        int id;
        std::vector<int>* order;
    };
    KList list;
    for (int id = 1; id <= 4; ++id)
        list.Append(new Ordered(id, &order));
    list.DeleteAll();
    EXPECT_EQ(order, (std::vector<int>{4, 3, 2, 1}));
}

TEST(KList, ValueListsHoldNoEntries) {
    int deaths = 0;
    CountedEntry entry(1, &deaths);
    {
        // A list of 8-byte values whose bytes happen to look like a pointer is
        // never treated as owning anything.
        KList values(sizeof(void*));
        CountedEntry* asValue = &entry;
        values.InsertAt(1, kListLast, &asValue);
        values.DeleteAll();
        EXPECT_EQ(values.GetCount(), 0u);
        values.InsertAt(1, kListLast, &asValue);
    }
    EXPECT_EQ(deaths, 0);

    KList shorts(2);
    shorts.Append(&entry);
    EXPECT_EQ(shorts.GetCount(), 0u);
    std::int16_t value = 12;
    shorts.InsertAt(1, kListLast, &value);
    EXPECT_EQ(shorts.EntryAt(1), nullptr);
    std::vector<int> seen;
    collect_functoid collect;
    shorts.ForEach(collect, &seen);
    EXPECT_TRUE(seen.empty());
}

TEST(KList, FailuresWhileDeletingLoseNoEntry) {
    int deaths = 0;
    {
        KList list;
        list.EnsureCapacity(64);
        for (int id = 1; id <= 3; ++id)
            list.Append(new CountedEntry(id, &deaths));
        ListAllocateFn previous = SetListAllocateHook(FailingAllocate);
        // The first removal shrinks 64 to 32 bytes and cannot get the block.
        try {
            list.DeleteAll();
            ADD_FAILURE() << "no exception";
        } catch (std::int32_t code) {
            EXPECT_EQ(code, kFailPlin);
        }
        EXPECT_EQ(deaths, 1);
        EXPECT_EQ(Ids(list), (std::vector<int>{1, 2}));
        SetListAllocateHook(previous);
        list.Append(new CountedEntry(4, &deaths));
        previous = SetListAllocateHook(FailingAllocate);
        // The destructor neither throws nor leaks while allocation fails.
        struct Restore {
            ListAllocateFn fn;
            ~Restore() { SetListAllocateHook(fn); }
        } restore{previous};
        (void)restore;
        EXPECT_EQ(list.GetCount(), 3u);
    }
    EXPECT_EQ(deaths, 4);
}
