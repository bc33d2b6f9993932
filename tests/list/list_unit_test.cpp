// Capacities of lists. fuzz/list_unit_fuzz.cpp tries operations with allocations that fail.
#include <gtest/gtest.h>

#include <functional>

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

}  // namespace
