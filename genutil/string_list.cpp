// Lists of strings, and lists of these.
#include <algorithm>

#include "genlist.h"
#include "genutil/owned_item.h"
#include "mbutil.h"

using namespace genutil;

static_assert(sizeof(long) >= sizeof(void*) || sizeof(void*) == 4, "an item holds a pointer");

CGNStringList::CGNStringList(unsigned int initial, unsigned int increment)
    : CGNList(initial, increment) {}

CGNStringList::CGNStringList(const CGNStringList& other) : CGNList(10, 10) {
    *this = other;
}

CGNStringList& CGNStringList::operator=(const CGNStringList& other) {
    if (this == &other) return *this;
    Free();
    return *this += other;
}

CGNStringList& CGNStringList::operator+=(const CGNStringList& other) {
    if (this == &other) return *this;
    for (int i = 0; i < other.GetCount(); ++i)
        if (const CGNString* s = other.GetItem(i)) AddItem(*s);
    return *this;
}

CGNStringList::~CGNStringList() {
    CGNStringList::Free();
}

void CGNStringList::Free() {
    FreeListItems();
    CGNList::Free();
}

unsigned char CGNStringList::AddItem(const CGNString& s) {
    CGNString* copy = NewItem<CGNString>(s);
    if (CGNList::AddItem(ItemOf(copy))) return 1;
    delete copy;
    return 0;
}

unsigned char CGNStringList::AddItem(const char* s) {
    return AddItem(CGNString(s));
}

unsigned char CGNStringList::InsertItem(int index, const CGNString& s) {
    CGNString* copy = NewItem<CGNString>(s);
    if (CGNList::InsertItem(index, ItemOf(copy))) return 1;
    delete copy;
    return 0;
}

void CGNStringList::DeleteItem(int index) {
    delete GetItem(index);
    CGNList::DeleteItem(index);
}

int CGNStringList::FindItem(const CGNString& s) const {
    for (int i = 0; i < GetCount(); ++i)
        if (const CGNString* item = GetItem(i); item && *item == s) return i;
    return -1;
}

unsigned char CGNStringList::AddUnique(const CGNString& s) {
    return FindItem(s) < 0 && AddItem(s);
}

unsigned char CGNStringList::InsertUnique(int index, const CGNString& s) {
    const CGNString copy(s);  // s may be the very item that goes
    DeleteItem(FindItem(copy));
    return InsertItem(index, copy);
}

void CGNStringList::FreeListItems() {
    while (GetCount() > 0) DeleteItem(GetCount() - 1);
}

unsigned int CGNStringList::ParseFrom(const CGNString& text, char separator) {
    const char* const bytes = text;
    const unsigned int length = text.GetLength();
    unsigned int start = 0;
    for (unsigned int i = 0; i <= length; ++i) {
        const bool end = i == length;
        if (!end && bytes[i] != separator) continue;
        if (end && start == length) break;
        CGNString item;
        if (i > start) item.CopyNBytes(bytes + start, i - start);
        AddItem(item);
        start = i + 1;
    }
    return static_cast<unsigned int>(GetCount());
}

// A heap sort: it stays within the array even where texts that are not valid order inconsistently.
void CGNStringList::Sort() {
    long* const items = GetItemListPtr();
    if (!items) return;
    const auto text = [](long item) -> const char* {
        const CGNString* s = ObjectOf<CGNString>(item);
        return s ? static_cast<const char*>(*s) : "";
    };
    const auto before = [&](long a, long b) { return mbstrcoll(text(a), text(b)) < 0; };
    std::make_heap(items, items + GetCount(), before);
    std::sort_heap(items, items + GetCount(), before);
}

CGNStringListList::CGNStringListList() : CGNList(10, 10) {}

CGNStringListList::CGNStringListList(const CGNStringListList& other) : CGNList(10, 10) {
    *this = other;
}

CGNStringListList& CGNStringListList::operator=(const CGNStringListList& other) {
    if (this == &other) return *this;
    Free();
    for (int i = 0; i < other.GetCount(); ++i) AddItem(*other.GetItem(i));
    return *this;
}

CGNStringListList::~CGNStringListList() {
    FreeListItems();
}

void CGNStringListList::Free() {
    FreeListItems();
    CGNList::Free();
}

unsigned char CGNStringListList::AddItem(const CGNStringList& list) {
    return InsertItem(GetCount(), list);
}

unsigned char CGNStringListList::InsertItem(int index, const CGNStringList& list) {
    CGNStringList* copy = NewItem<CGNStringList>(list);
    if (copy && CGNList::InsertItem(index, ItemOf(copy))) return 1;
    delete copy;
    return 0;
}

CGNStringList* CGNStringListList::GetItem(int index) {
    return ObjectOf<CGNStringList>(CGNList::GetItem(index));
}

const CGNStringList* CGNStringListList::GetItem(int index) const {
    return ObjectOf<CGNStringList>(CGNList::GetItem(index));
}

void CGNStringListList::DeleteItem(int index) {
    delete GetItem(index);
    CGNList::DeleteItem(index);
}

void CGNStringListList::FreeListItems() {
    while (GetCount() > 0) DeleteItem(GetCount() - 1);
}
