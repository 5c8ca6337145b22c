#include "foundation/KLinkedList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Node : KLinkedListEntry {
    explicit Node(int id) : id(id) {}
    int id;
};

// The ids in array order, after checking that the neighbour pointers walk the
// same order in both directions.
std::vector<int> CheckedIds(const KLinkedList& list) {
    std::vector<int> ids;
    const std::uint32_t count = list.GetCount();
    for (std::uint32_t i = 1; i <= count; ++i) {
        auto* node = static_cast<Node*>(list.EntryAt(i));
        ids.push_back(node->id);
        EXPECT_EQ(node->fPrevious, i > 1 ? list.EntryAt(i - 1) : nullptr) << "at " << i;
        EXPECT_EQ(node->fNext, i < count ? list.EntryAt(i + 1) : nullptr) << "at " << i;
    }
    return ids;
}

} // namespace

TEST(KLinkedList, AppendLinkedChainsEntries) {
    KLinkedList list;
    auto* first = new Node(1);
    list.AppendLinked(first);
    EXPECT_EQ(first->fNext, nullptr);
    EXPECT_EQ(first->fPrevious, nullptr);
    list.AppendLinked(new Node(2));
    list.AppendLinked(new Node(3));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{1, 2, 3}));
}

TEST(KLinkedList, InsertLinkedAtFrontMiddleAndBeyond) {
    KLinkedList list;
    list.InsertLinkedAt(0, new Node(3));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{3}));
    list.InsertLinkedAt(1, new Node(1));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{1, 3}));
    list.InsertLinkedAt(2, new Node(2));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{1, 2, 3}));
    list.InsertLinkedAt(0, new Node(0));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{0, 1, 2, 3}));
    list.InsertLinkedAt(4, new Node(25));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{0, 1, 2, 25, 3}));
    list.InsertLinkedAt(6, new Node(4));
    list.InsertLinkedAt(kListLast, new Node(5));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{0, 1, 2, 25, 3, 4, 5}));
}

TEST(KLinkedList, NullEntriesAreHeldButNotLinked) {
    KLinkedList list;
    auto* a = new Node(1);
    list.AppendLinked(a);
    list.AppendLinked(nullptr);
    list.InsertLinkedAt(1, nullptr);
    EXPECT_EQ(list.GetCount(), 3u);
    EXPECT_EQ(a->fNext, nullptr);
    EXPECT_EQ(a->fPrevious, nullptr);
}
