// Capacities of lists, and failures of memory.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>

#include "genlist.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/reported_failures.h"

namespace {

// The number of items of the array that an operation allocates.
std::size_t ItemsAllocated(const std::function<void()>& operation) {
    const AllocationGate all(INT_MAX);
    operation();
    return all.Largest() / sizeof(GNItem);
}

TEST(ListStorage, GrowsInBlocks) {
    EXPECT_EQ(ItemsAllocated([] { CGNList(0, 0); }), 0u);
    EXPECT_EQ(ItemsAllocated([] { CGNList(25, 10); }), 30u);
    EXPECT_EQ(ItemsAllocated([] { CGNList(30, 10); }), 30u);
    CGNList list(0, 0);
    EXPECT_EQ(ItemsAllocated([&] { list.AddItem(1); }), 10u);
    EXPECT_EQ(ItemsAllocated([&] { list.AllocateItemList(10); }), 0u);
    EXPECT_EQ(ItemsAllocated([&] { list.AllocateItemList(11); }), 20u);
    CGNList other(10, 10);
    EXPECT_EQ(ItemsAllocated([&] { other.AllocateItemList(20); }), 30u);  // strictly above
    CGNList copy(other), assigned(0, 5);
    assigned = other;  // increment and all
    for (CGNList* same : {&copy, &assigned})
        EXPECT_EQ(ItemsAllocated([&] { same->AllocateItemList(31); }), 40u);
    other.Free();
    EXPECT_EQ(ItemsAllocated([&] { other.AddItem(1); }), 10u);
    const ReportedFailures reported;
    EXPECT_FALSE(other.AllocateItemList(0xFFFFFFFF));
    EXPECT_EQ(CGNList(0xFFFFFFFF, 0xFFFFFFFF).GetItemListPtr(), nullptr);
    EXPECT_EQ(reported.Count(), 2);
    EXPECT_EQ(other.GetItem(0), 1);
}

struct Lists {
    CGNList numbers{1, 1};
    CGNStringList strings{1, 1};
    CGNStringListList lists;
    CGNCleanupList calls;
};

// Each string is one that was added, or null; each list in the list is complete.
void ExpectWhole(const Lists& lists) {
    static const std::set<std::string> kAdded = {"first", "second", "text", "more", "a", "b", "c"};
    for (int i = 0; i < lists.strings.GetCount(); ++i) {
        const CGNString* item = lists.strings.GetItem(i);
        EXPECT_TRUE(!item || kAdded.count(static_cast<const char*>(*item))) << i;
    }
    for (int i = 0; i < lists.lists.GetCount(); ++i) {
        ASSERT_NE(lists.lists.GetItem(i), nullptr);
        EXPECT_EQ(lists.lists.GetItem(i)->GetCount(), 2);
        EXPECT_NE(lists.lists.GetItem(i)->GetItem(1), nullptr);
    }
}

TEST(ListStorage, FailedInsertionKeepsTheEqualString) {
    CGNStringList list;
    list.ParseFrom(";a;b", ';');
    const ReportedFailures reported;
    for (const int failing : {0, 1}) {  // the string, its text
        const AllocationGate gate(failing, 1);
        EXPECT_FALSE(list.InsertUnique(0, *list.GetItem(2)));
    }
    EXPECT_EQ(reported.Count(), 2);
    ASSERT_EQ(list.GetCount(), 3);
    EXPECT_STREQ(*list.GetItem(2), "b");
}

// The capacity grows by blocks, but the array is not moved for each of them.
TEST(ListStorage, GrowingListSeldomMoves) {
    CGNList list(0, 10);
    int moves = 0;
    for (unsigned capacity = 10; capacity <= 20000; capacity += 10) {
        const std::size_t items = ItemsAllocated([&] { list.AllocateItemList(capacity); });
        if (items == 0) continue;
        ++moves;
        EXPECT_GE(items, capacity);
        EXPECT_LE(items, capacity + 10 + (capacity + 10) / 8);
    }
    EXPECT_LT(moves, 100);
}

TEST(ListStorage, FailedAllocationsLeaveAUsableList) {
    static const CGNString kText("text");
    const std::function<void(Lists&)> kOperations[] = {
        [](Lists& l) { l.numbers.AddItem(5), l.numbers.AddItem(6); },
        [](Lists& l) { l.numbers.InsertItem(0, 5), l.numbers.SetItem(l.numbers.GetCount(), 6); },
        [](Lists& l) { CGNList(l.numbers).AddItem(1), l.numbers = CGNList(7, 3); },
        [](Lists& l) { l.strings.AddItem(kText), l.strings.AddItem("more"); },
        [](Lists& l) { l.strings.InsertItem(0, kText), l.strings.InsertUnique(0, kText); },
        [](Lists& l) { l.strings.ParseFrom("a;b;c", ';'), l.strings.AddUnique(kText); },
        [](Lists& l) { l.strings.AddItem("a"), l.strings.Sort(); },
        [](Lists& l) { l.strings = CGNStringList(l.strings) += l.strings; },
        [](Lists& l) { l.lists.AddItem(l.strings), l.lists.InsertItem(0, l.strings); },
        [](Lists& l) { l.lists = CGNStringListList(l.lists); },
        [](Lists& l) { l.calls.AddItem([](void*) {}, nullptr), l.calls.Execute(); },
    };
    for (const auto& operation : kOperations)
        for (int failing = 0; failing < 100; ++failing) {
            Lists lists;
            lists.strings.AddItem("first");
            lists.strings.AddItem("second");
            lists.lists.AddItem(lists.strings);
            const ReportedFailures reported;
            {
                const AllocationGate gate(failing, 1);
                operation(lists);
                if (gate.Count() <= failing) break;  // all of its allocations have failed once
            }
            EXPECT_GT(reported.Count(), 0);
            ExpectWhole(lists);
            operation(lists);
            EXPECT_TRUE(lists.strings.AddItem("usable"));
            EXPECT_STREQ(*lists.strings.GetItem(lists.strings.GetCount() - 1), "usable");
        }
}

}  // namespace
