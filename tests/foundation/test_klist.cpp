#include "foundation/Failures.h"
#include "foundation/KList.h"
#include "foundation/ListMemory.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// An entry that writes its id into a shared log when it dies.
struct Entry : KListEntry {
    Entry(int id, std::vector<int>* deaths) : id(id), deaths(deaths) {}
    ~Entry() override { deaths->push_back(id); }
    int id;
    std::vector<int>* deaths;
};

std::vector<int> Ids(const KList& list) {
    std::vector<int> ids;
    for (std::uint32_t i = 1; i <= list.GetCount(); ++i)
        ids.push_back(list.EntryAt(i) ? static_cast<Entry*>(list.EntryAt(i))->id : 0);
    return ids;
}

struct collect_functoid : KListFunctoid {
    void Apply(KListEntry* entry, void* argument) override {
        static_cast<std::vector<int>*>(argument)->push_back(static_cast<Entry*>(entry)->id);
    }
};

// Deletes every entry with an odd id, as the scene deletes selected objects.
struct delete_odd_functoid : KListFunctoid {
    explicit delete_odd_functoid(KList& list) : list(list) {}
    void Apply(KListEntry* entry, void*) override {
        if (static_cast<Entry*>(entry)->id % 2 == 0) return;
        list.RemoveEntry(entry);
        delete entry;
    }
    KList& list;
};

struct id_testoid : KListTestoid {
    bool Test(KListEntry* entry, std::intptr_t argument) override {
        ++calls;
        return static_cast<Entry*>(entry)->id == argument;
    }
    int calls = 0;
};

void* FailingAllocate(std::size_t) {
    return nullptr;
}

} // namespace

TEST(KList, WalksFindsAndRemovesEntries) {
    std::vector<int> deaths;
    KList list;
    std::vector<int> forward, backward;
    collect_functoid collect;
    id_testoid test;
    list.ForEach(collect, &forward); // an empty list calls nothing
    list.ForEachBackward(collect, &forward);
    EXPECT_EQ(list.FirstThat(test, 1), nullptr);
    EXPECT_TRUE(forward.empty());
    EXPECT_EQ(test.calls, 0);
    EXPECT_EQ(list.EntryAt(1), nullptr);

    Entry* two = new Entry(2, &deaths);
    list.Append(two);
    list.InsertEntryAt(0, new Entry(1, &deaths));
    list.InsertEntryAt(kListLast, new Entry(3, &deaths));
    EXPECT_EQ(Ids(list), (std::vector<int>{1, 2, 3}));
    list.ForEach(collect, &forward);
    list.ForEachBackward(collect, &backward);
    EXPECT_EQ(forward, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(backward, (std::vector<int>{3, 2, 1}));

    EXPECT_EQ(list.FirstThat(test, 2), two);
    EXPECT_EQ(test.calls, 2);
    EXPECT_EQ(list.FirstThat(test, 9), nullptr);

    list.RemoveEntry(two);
    list.RemoveEntry(two);
    EXPECT_EQ(Ids(list), (std::vector<int>{1, 3}));
    EXPECT_TRUE(deaths.empty());
    delete two;
}

TEST(KList, ForEachBackwardToleratesDeletingTheCurrentEntry) {
    std::vector<int> deaths;
    KList list;
    for (int id = 1; id <= 7; ++id)
        list.Append(new Entry(id, &deaths));
    delete_odd_functoid deleteOdd(list);
    list.ForEachBackward(deleteOdd, nullptr);
    EXPECT_EQ(deaths, (std::vector<int>{7, 5, 3, 1}));
    EXPECT_EQ(Ids(list), (std::vector<int>{2, 4, 6}));
}

TEST(KList, OwnsItsEntriesUnlessEmptiedFirst) {
    std::vector<int> deaths;
    std::vector<Entry*> entries;
    {
        KList list;
        for (int id = 1; id <= 4; ++id) {
            entries.push_back(new Entry(id, &deaths));
            list.Append(entries.back());
        }
        list.Append(nullptr);
        list.RemoveAll();
        EXPECT_EQ(list.GetCount(), 0u);
        EXPECT_TRUE(deaths.empty());

        for (Entry* entry : entries)
            list.Append(entry);
        list.Append(nullptr);
        list.DeleteAll();
        EXPECT_EQ(deaths, (std::vector<int>{4, 3, 2, 1})); // from the end
        list.Append(new Entry(5, &deaths));
    }
    EXPECT_EQ(deaths.back(), 5); // the list's death deletes what it holds

    // A list of plain values holds no entries and deletes nothing, even when
    // its bytes look like a pointer.
    Entry kept(6, &deaths);
    {
        KList values(sizeof(void*));
        Entry* asValue = &kept;
        values.InsertAt(1, kListLast, &asValue);
        values.DeleteAll();
        values.InsertAt(1, kListLast, &asValue);
        KList shorts(2);
        shorts.Append(&kept);
        EXPECT_EQ(shorts.GetCount(), 0u);
    }
    EXPECT_EQ(deaths.size(), 5u);
}

TEST(KList, FailedShrinkWhileDeletingLosesNoEntry) {
    std::vector<int> deaths;
    {
        KList list;
        list.EnsureCapacity(64);
        for (int id = 1; id <= 3; ++id)
            list.Append(new Entry(id, &deaths));
        ListAllocateFn previous = SetListAllocateHook(FailingAllocate);
        // The first removal would shrink 64 bytes to 32 and cannot get them.
        EXPECT_THROW(list.DeleteAll(), std::int32_t);
        EXPECT_EQ(deaths, (std::vector<int>{3}));
        EXPECT_EQ(Ids(list), (std::vector<int>{1, 2}));
        // Nor does the destructor throw or leak while allocation fails.
        struct Restore {
            ListAllocateFn fn;
            ~Restore() { SetListAllocateHook(fn); }
        } restore{previous};
    }
    EXPECT_EQ(deaths, (std::vector<int>{3, 2, 1}));
}
