// Room of lists, and what is left when memory runs out.
#include <gtest/gtest.h>

#include <functional>

#include "genlist.h"
#include "genutil/allocate.h"
#include "tests/support/reported_failures.h"

namespace {

int g_left = 0;  // allocations before the one that fails
std::size_t g_largest = 0;

// Bytes of the array that an operation allocates; 0 when it allocates none.
std::size_t BytesAllocated(const std::function<void()>& operation) {
    g_largest = 0;
    genutil::g_allocationGate = [](std::size_t bytes) {
        if (bytes > g_largest) g_largest = bytes;
        return true;
    };
    operation();
    genutil::g_allocationGate = nullptr;
    return g_largest / sizeof(long);
}

TEST(ListStorage, GrowsInBlocks) {
    EXPECT_EQ(BytesAllocated([] { CGNList(0, 0); }), 0u);
    EXPECT_EQ(BytesAllocated([] { CGNList(25, 10); }), 30u);
    EXPECT_EQ(BytesAllocated([] { CGNList(30, 10); }), 30u);
    CGNList list(0, 0);
    EXPECT_EQ(BytesAllocated([&] { list.AddItem(1); }), 10u);
    EXPECT_EQ(BytesAllocated([&] { list.AllocateItemList(10); }), 0u);
    EXPECT_EQ(BytesAllocated([&] { list.AllocateItemList(11); }), 20u);
    CGNList other(10, 10);
    EXPECT_EQ(BytesAllocated([&] { other.AllocateItemList(20); }), 30u);  // strictly above
    EXPECT_EQ(BytesAllocated([&] { CGNList copy(other); }), 30u);
    other.Free();
    EXPECT_EQ(BytesAllocated([&] { other.AddItem(1); }), 10u);
    const ReportedFailures reported;
    EXPECT_FALSE(other.AllocateItemList(0xFFFFFFFF));
    EXPECT_EQ(CGNList(0xFFFFFFFF, 0xFFFFFFFF).GetItemListPtr(), nullptr);
    EXPECT_EQ(reported.Count(), 2);
    EXPECT_EQ(other.GetItem(0), 1);
}

TEST(ListStorage, EachFailureOfMemoryLeavesAUsableList) {
    struct Lists {
        CGNList numbers{1, 1};
        CGNStringList strings{1, 1};
        CGNStringListList lists;
        CGNCleanupList calls;
    };
    static const CGNString kText("text");
    const std::function<void(Lists&)> kOperations[] = {
        [](Lists& l) {
            l.numbers.AddItem(5);
            l.numbers.AddItem(6);
        },
        [](Lists& l) {
            l.numbers.InsertItem(0, 5);
            l.numbers.SetItem(l.numbers.GetCount(), 6);
        },
        [](Lists& l) {
            CGNList copy(l.numbers);
            l.numbers = CGNList(7, 3);
            copy.AddItem(1);
        },
        [](Lists& l) {
            l.strings.AddItem(kText);
            l.strings.AddItem("more");
        },
        [](Lists& l) {
            l.strings.InsertItem(0, kText);
            l.strings.InsertUnique(0, kText);
        },
        [](Lists& l) {
            l.strings.ParseFrom("a;b;c", ';');
            l.strings.Sort();
            l.strings.AddUnique("a");
        },
        [](Lists& l) {
            CGNStringList copy(l.strings);
            copy += l.strings;
            l.strings = copy;
        },
        [](Lists& l) {
            l.lists.AddItem(l.strings);
            l.lists.InsertItem(0, l.strings);
        },
        [](Lists& l) {
            CGNStringListList copy(l.lists);
            l.lists = copy;
        },
        [](Lists& l) {
            l.calls.AddItem([](void*) {}, nullptr);
            l.calls.Execute();
        },
    };
    for (const auto& operation : kOperations)
        for (int failing = 0; failing < 100; ++failing) {
            Lists lists;
            lists.strings.AddItem("first");
            lists.strings.AddItem("second");
            lists.lists.AddItem(lists.strings);
            const ReportedFailures reported;
            g_left = failing;
            genutil::g_allocationGate = [](std::size_t) { return g_left-- != 0; };
            operation(lists);
            genutil::g_allocationGate = nullptr;
            if (g_left >= 0) break;  // all of its allocations have failed once
            EXPECT_GT(reported.Count(), 0);
            operation(lists);
            EXPECT_TRUE(lists.strings.AddItem("usable"));
            EXPECT_STREQ(*lists.strings.GetItem(lists.strings.GetCount() - 1), "usable");
        }
}

}  // namespace
