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

TEST(KLinkedList, NeighboursFollowAppendAndInsert) {
    KLinkedList list;
    list.AppendLinked(new Node(2));
    list.AppendLinked(new Node(4));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{2, 4}));
    list.InsertLinkedAt(0, new Node(1));
    list.InsertLinkedAt(3, new Node(3));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{1, 2, 3, 4}));
    list.InsertLinkedAt(1, new Node(0));
    list.InsertLinkedAt(6, new Node(5));
    list.InsertLinkedAt(kListLast, new Node(6));
    EXPECT_EQ(CheckedIds(list), (std::vector<int>{0, 1, 2, 3, 4, 5, 6}));

    KLinkedList single;
    single.InsertLinkedAt(1, new Node(7));
    EXPECT_EQ(CheckedIds(single), (std::vector<int>{7}));
}
