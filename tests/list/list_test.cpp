// Lists of numbers, of strings and of lists; calls to make later; the checksum. Any operations in
// any order are compared with vectors by fuzz/list_unit_fuzz.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>

#include "genlist.h"
#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

std::string Join(const CGNStringList& list) {
    std::string text;
    for (int i = 0; i < list.GetCount(); ++i) {
        const CGNString* item = list.GetItem(i);
        text += item ? std::string(*item, item->GetLength()) + "|" : "null|";
    }
    return text;
}

CGNStringList ListOf(const char* text) {
    CGNStringList list;
    list.ParseFrom(text, ';');
    return list;
}

TEST(List, SetItemMayWriteAfterTheLastItem) {
    CGNList list(0, 3);
    for (long i = 0; i < 9; ++i) {  // at full capacity too
        EXPECT_TRUE(list.SetItem(list.GetCount(), 100 + i));
        EXPECT_EQ(list.GetCount(), static_cast<int>(i));
        EXPECT_TRUE(list.AddItem(i));
    }
}

TEST(List, CopiesAreIndependent) {
    CGNList list;
    list.AddItem(1);
    CGNList copy(list), assigned(0, 5);
    assigned = list;
    assigned = *&assigned;
    list.SetItem(0, 2);
    EXPECT_EQ(copy.GetItem(0), 1);
    EXPECT_EQ(assigned.GetItem(0), 1);
    list.Free();
    EXPECT_EQ(list.GetItemListPtr(), nullptr);
    EXPECT_EQ(list.GetItem(0), 0);
}
TEST(StringList, OwnsCopies) {
    CGNStringList list;
    CGNString s("b");
    EXPECT_TRUE(list.AddItem(s) && list.AddItem(static_cast<const char*>(nullptr)));
    s = "changed";
    EXPECT_EQ(Join(list), "b||");
    CGNStringList copy(list), assigned;
    assigned.AddItem("old");
    assigned = list;
    list += list;
    EXPECT_EQ(Join(list), "b||");
    list += copy;
    EXPECT_EQ(Join(list), "b||b||");
    list.FreeListItems();
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(Join(copy) + Join(assigned), "b||b||");
}

TEST(StringList, InsertsAnItemOfItsOwnOnce) {
    CGNStringList list = ListOf("b;c;C");
    EXPECT_TRUE(list.InsertUnique(0, *list.GetItem(2)));
    EXPECT_EQ(Join(list), "C|b|c|");
    EXPECT_FALSE(list.InsertUnique(3, "c"));  // outside once the old one is deleted
    EXPECT_EQ(Join(list), "C|b|");
}

TEST(StringList, ParsesBytes) {
    CGNStringList list = ListOf("x");
    EXPECT_EQ(list.ParseFrom("y;;z;", ';'), 4u);
    const CodeSetGuard guard(5);
    EXPECT_EQ(list.ParseFrom("\x83\x5C;", '\x5C'), 6u);
    EXPECT_EQ(Join(list), "x|y||z|\x83|;|");
}
// A failed allocation leaves a null string in the list.
TEST(StringList, CopiesAndSortsNullItems) {
    CGNStringList list = ListOf("b;a");
    static_cast<CGNList&>(list).InsertItem(1, 0);
    CGNStringList copy(list), assigned;
    assigned = list;
    EXPECT_EQ(Join(copy) + Join(assigned), "b|null|a|b|null|a|");
    EXPECT_TRUE(copy.AddUnique(""));
    EXPECT_TRUE(copy.InsertUnique(0, "a"));
    copy.Sort();
    EXPECT_EQ(Join(copy), "null||a|b|");
    copy.DeleteItem(0);
    CGNStringListList lists;
    EXPECT_TRUE(lists.AddItem(list));
    EXPECT_EQ(Join(*lists.GetItem(0)), "b|null|a|");
}

TEST(StringList, SortsByCollation) {
    CGNStringList list = ListOf("pear;Apple;fig;apple;Banana;fig");
    list.Sort();
    for (int i = 1; i < list.GetCount(); ++i)
        EXPECT_LE(mbstrcoll(*list.GetItem(i - 1), *list.GetItem(i)), 0);
    EXPECT_STREQ(*list.GetItem(2), "Banana");
    EXPECT_STREQ(*list.GetItem(5), "pear");
}

// Every order of up to seven items takes each path through the sort.
TEST(StringList, SortsAnyOrder) {
    std::string letters;
    CGNStringList().Sort();
    for (int count = 1; count <= 7; ++count) {
        letters += static_cast<char>('a' + count / 2);  // with equal ones
        std::string order = letters;
        do {
            CGNStringList list;
            for (const char letter : order) list.AddItem(std::string(1, letter).c_str());
            list.Sort();
            std::string sorted;
            for (int i = 0; i < count; ++i) sorted += *list.GetItem(i);
            ASSERT_EQ(sorted, letters) << order;
        } while (std::next_permutation(order.begin(), order.end()));
    }
}

TEST(StringList, FindsJoinsAndIterates) {
    CGNStringList list;
    EXPECT_TRUE(list.Join(",").IsEmpty() && list.begin() == list.end());
    for (const char* name : {"b", "", "B", "a", "b"}) list.AddItem(name);
    EXPECT_EQ(list.Find("b"), 0);
    EXPECT_EQ(list.Find("b", 1), 4);
    EXPECT_EQ(list.Find("b", 5), -1);
    EXPECT_EQ(list.Find("b", -1), -1);
    EXPECT_STREQ(list.Join(", "), "b, , B, a, b");
    EXPECT_STREQ(list.Join(nullptr), "bBab");
    list.Sort(CGNStringLess());
    list.CGNList::AddItem(0);
    EXPECT_STREQ(list.Join("|"), "|B|a|b|b|");
    int strings = 0;
    for (const CGNString* item : list) strings += item != nullptr;
    EXPECT_EQ(strings, 5);
    list.Sort([](const CGNString& a, const CGNString& b) { return CGNStringLess()(b, a); });
    EXPECT_STREQ(list.Join("|"), "|b|b|a|B|");
    CGNList numbers;
    numbers.AddItem(7), numbers.AddItem(8);
    EXPECT_EQ(numbers.Find(8), 1);
    EXPECT_EQ(numbers.Find(8, 2), -1);
    EXPECT_EQ(std::accumulate(numbers.begin(), numbers.end(), 0l), 15);
}

TEST(StringListList, OwnsCopies) {
    CGNStringListList lists;
    EXPECT_TRUE(lists.AddItem(ListOf("a;b")) && lists.InsertItem(0, ListOf("c")));
    EXPECT_FALSE(lists.InsertItem(3, ListOf("d")));
    CGNStringListList copy(lists), assigned;
    assigned = lists;
    lists.DeleteItem(0);
    EXPECT_EQ(Join(*lists.GetItem(0)), "a|b|");
    EXPECT_EQ(lists.GetItem(1), nullptr);
    lists.FreeListItems();
    EXPECT_EQ(lists.GetCount(), 0);
    EXPECT_EQ(Join(*copy.GetItem(0)) + Join(*assigned.GetItem(1)), "c|a|b|");
}
TEST(CleanupList, CallsInOrderEachTime) {
    static std::string calls;
    calls.clear();
    const auto note = [](void* argument) { calls += static_cast<const char*>(argument); };
    char a[] = "a", b[] = "b", c[] = "c";
    CGNCleanupList list;
    list.Execute();
    EXPECT_TRUE(list.AddItem(note, a));
    EXPECT_TRUE(list.AddItem(new CGNCleanupItem{note, b}));
    EXPECT_TRUE(list.AddItem(nullptr, nullptr));
    EXPECT_TRUE(list.AddItem(note, c));
    list.Execute();
    list.Execute();
    EXPECT_EQ(calls, "abcabc");
    EXPECT_EQ(list.GetItem(1)->m_argument, b);
    EXPECT_EQ(list.GetItem(4), nullptr);
    list.FreeListItems();
    EXPECT_EQ(list.GetCount(), 4);
    list.Execute();
    list.Free();
    EXPECT_EQ(list.GetCount(), 0);
    list.AddItem(note, a);  // destroyed without a call
    EXPECT_EQ(calls, "abcabc");
}

TEST(CleanupList, CallsMayChangeTheList) {
    static int left;
    left = 40;
    CGNCleanupList list;
    const auto again = [](void* argument) {
        const auto addAgain = *static_cast<CGNCleanupList*>(argument)->GetItem(0);
        if (--left > 0)
            static_cast<CGNCleanupList*>(argument)->AddItem(addAgain.m_function, argument);
    };
    list.AddItem(again, &list);
    list.Execute();
    EXPECT_EQ(list.GetCount(), 40);
    EXPECT_EQ(left, 0);
    CGNCleanupList freed;
    freed.AddItem([](void* argument) { static_cast<CGNCleanupList*>(argument)->Free(); }, &freed);
    freed.AddItem([](void*) { left = 1; }, nullptr);
    freed.Execute();
    EXPECT_EQ(left, 0);
}

// The table's entries are the checksums of single bytes.
TEST(Crc32, AgreesWithItsDefinition) {
    unsigned char data[1000];
    for (std::size_t i = 0; i < sizeof data; ++i)
        data[i] = static_cast<unsigned char>(i * i * 2654435761u >> 8);
    const auto entry = [](unsigned index) {
        const auto byte = static_cast<unsigned char>(index);
        return gencrc32(0, &byte, 1);
    };
    EXPECT_EQ(entry(1), 0x77073096u);
    EXPECT_EQ(entry(255), 0x2D02EF8Du);
    for (const unsigned start : {0u, 1u, 3u})
        for (const unsigned length : {0u, 1u, 15u, 16u, 17u, 31u, 100u, 997u}) {
            unsigned slow = 0xDEADBEEF;
            for (unsigned i = 0; i < length; ++i)
                slow = slow << 8 ^ entry((slow >> 24 ^ data[start + i]) & 0xFF);
            EXPECT_EQ(gencrc32(0xDEADBEEF, data + start, length), slow) << length;
        }
}
}  // namespace
