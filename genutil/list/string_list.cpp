// Lists that own strings, and lists of such lists.
#include <algorithm>
#include <cstring>

#include "genutil/list/storage.h"
#include "genutil/string/storage.h"
#include "mbutil.h"

using genutil::CheckListMemory;
using genutil::New;
using genutil::OwnedItems;
using Strings = OwnedItems<CGNString>;
using StringLists = OwnedItems<CGNStringList>;

// -- Copies --------------------------------------------------------------------------------------

// A copy whose allocation failed would look like another text or a shorter list, so it is
// discarded.
namespace {

CGNString* CopyOf(const CGNString& s) {
    auto* copy = New<CGNString>(s);
    if (!CheckListMemory(copy) || copy->GetLength() == s.GetLength()) return copy;
    delete copy;
    return nullptr;
}

CGNString* CopyOf(const char* s) {
    auto* copy = New<CGNString>(s);
    if (!CheckListMemory(copy) || !copy->IsEmpty() || !s || !*s) return copy;
    delete copy;
    return nullptr;
}

// Copies n bytes, which may include a 0.
CGNString* CopyOf(const char* bytes, unsigned n) {
    auto* copy = New<CGNString>();
    if (!CheckListMemory(copy) || n == 0) return copy;
    genutil::StringStorage::Take(*copy, bytes, n, n);
    if (!copy->IsEmpty()) return copy;
    delete copy;
    return nullptr;
}

bool IsWholeCopy(const CGNStringList& copy, const CGNStringList& list) {
    if (copy.GetCount() != list.GetCount()) return false;
    for (int i = 0; i < list.GetCount(); ++i)
        if (!copy.GetItem(i) && list.GetItem(i)) return false;
    return true;
}

CGNStringList* CopyOf(const CGNStringList& list) {
    auto* copy = New<CGNStringList>(list);
    if (!CheckListMemory(copy) || IsWholeCopy(*copy, list)) return copy;
    delete copy;
    return nullptr;
}

}  // namespace

// -- CGNStringList -------------------------------------------------------------------------------

CGNStringList::CGNStringList() = default;

CGNStringList::CGNStringList(unsigned int initial, unsigned int increment)
    : CGNList(initial, increment) {}

// Assignment frees the array first, so an initial one would be useless.
CGNStringList::CGNStringList(const CGNStringList& other) : CGNList(0, genutil::kListIncrement) {
    *this += other;
}

CGNStringList::~CGNStringList() {
    Strings::DestroyAll(*this);
}

CGNStringList& CGNStringList::operator=(const CGNStringList& other) {
    if (this == &other) return *this;
    Free();
    return *this += other;
}

CGNStringList& CGNStringList::operator+=(const CGNStringList& other) {
    if (this == &other) return *this;
    for (int i = 0; i < other.GetCount(); ++i) {
        const CGNString* item = other.GetItem(i);
        Strings::Append(*this, item ? CopyOf(*item) : nullptr);
    }
    return *this;
}

// A null item represents a string whose allocation failed. It keeps later strings at their
// positions.
unsigned char CGNStringList::AddItem(const CGNString& s) {
    return Strings::Append(*this, CopyOf(s));
}

unsigned char CGNStringList::AddItem(const char* s) {
    return Strings::Append(*this, CopyOf(s));
}

unsigned char CGNStringList::InsertItem(int index, const CGNString& s) {
    CGNString* copy = CopyOf(s);
    return copy && Strings::Insert(*this, index, copy);
}

void CGNStringList::DeleteItem(int index) {
    Strings::Delete(*this, index);
}

unsigned char CGNStringList::AddUnique(const CGNString& s) {
    return Find(s) < 0 && AddItem(s);
}

unsigned char CGNStringList::InsertUnique(int index, const CGNString& s) {
    CGNString* copy = CopyOf(s);  // first, because s may be the item that is deleted
    if (!copy) return 0;
    DeleteItem(Find(s));
    return Strings::Insert(*this, index, copy);
}

void CGNStringList::FreeListItems() {
    Strings::DestroyAll(*this);
}

void CGNStringList::Free() {
    Strings::DestroyAll(*this);
    CGNList::Free();
}

unsigned int CGNStringList::ParseFrom(const CGNString& text, char separator) {
    const char* part = text;
    const char* const end = part + text.GetLength();
    while (part != end) {
        const auto* found = static_cast<const char*>(
            std::memchr(part, separator, static_cast<std::size_t>(end - part)));
        const char* partEnd = found ? found : end;
        Strings::Append(*this, CopyOf(part, static_cast<unsigned>(partEnd - part)));
        part = found ? found + 1 : end;
    }
    return static_cast<unsigned int>(GetCount());
}

// -- Sorting -------------------------------------------------------------------------------------

namespace {

// An order of strings, in which null items come first.
struct Order {
    bool (*before)(const CGNString&, const CGNString&, void*);
    void* argument;

    bool operator()(GNItem a, GNItem b) const {
        const auto* x = reinterpret_cast<const CGNString*>(a);
        const auto* y = reinterpret_cast<const CGNString*>(b);
        if (!x || !y) return !x && y;
        return before(*x, *y, argument);
    }
};

// Lets the item at `root` sink into the heap below it. The hole moves down to a leaf first and the
// item climbs from there, which halves the number of comparisons, the main cost.
void Sink(GNItem* items, int root, int size, const Order& comesBefore) {
    const GNItem item = items[root];
    int hole = root;
    while (hole < size / 2) {
        int child = 2 * hole + 1;
        if (child + 1 < size && comesBefore(items[child], items[child + 1])) ++child;
        items[hole] = items[child];
        hole = child;
    }
    while (hole > root && comesBefore(items[(hole - 1) / 2], item)) {
        items[hole] = items[(hole - 1) / 2];
        hole = (hole - 1) / 2;
    }
    items[hole] = item;
}

}  // namespace

void CGNStringList::Sort() {
    SortBy([](const CGNString& a, const CGNString& b, void*) { return mbstrcoll(a, b) < 0; },
           nullptr);
}

// Uses a heap sort, because mbstrcoll is not a strict order if allocation fails during a
// comparison. Whatever the comparisons return, a heap sort keeps within the array, allocates
// nothing and ends.
void CGNStringList::SortBy(bool (*before)(const CGNString&, const CGNString&, void*),
                           void* argument) {
    GNItem* items = CGNList::GetItemListPtr();
    const Order comesBefore{before, argument};
    const int count = GetCount();
    for (int root = count / 2 - 1; root >= 0; --root) Sink(items, root, count, comesBefore);
    for (int size = count - 1; size > 0; --size) {
        std::swap(items[0], items[size]);
        Sink(items, 0, size, comesBefore);
    }
}

int CGNStringList::Find(const CGNString& s, int start) const {
    for (int i = start < 0 ? GetCount() : start; i < GetCount(); ++i)
        if (const CGNString* item = GetItem(i); item && *item == s) return i;
    return -1;
}

CGNString CGNStringList::Join(const char* separator) const {
    const std::string_view between = separator ? separator : "";
    std::uint64_t length = 0;
    for (const CGNString* item : *this) length += (item ? item->GetLength() : 0) + between.size();
    CGNString text;
    if (GetCount() == 0) return text;
    length -= between.size();
    char* const made = genutil::NewText<char>(length);
    if (!made) return text;
    char* at = made;
    const auto append = [&at](std::string_view part) {
        genutil::CopyUnits(at, part.data(), part.size());
        at += part.size();
    };
    for (int i = 0; i < GetCount(); ++i) {
        if (i > 0) append(between);
        if (const CGNString* item = GetItem(i)) append(item->View());
    }
    *at = 0;
    genutil::StringStorage::Adopt(text, made, length, length, genutil::Placing::kStored);
    return text;
}

// -- CGNStringListList ---------------------------------------------------------------------------

CGNStringListList::CGNStringListList() = default;

CGNStringListList::CGNStringListList(const CGNStringListList& other)
    : CGNList(0, genutil::kListIncrement) {
    *this = other;
}

CGNStringListList::~CGNStringListList() {
    StringLists::DestroyAll(*this);
}

CGNStringListList& CGNStringListList::operator=(const CGNStringListList& other) {
    if (this == &other) return *this;
    Free();
    for (int i = 0; i < other.GetCount(); ++i)
        if (const CGNStringList* item = other.GetItem(i)) AddItem(*item);
    return *this;
}

unsigned char CGNStringListList::AddItem(const CGNStringList& list) {
    CGNStringList* copy = CopyOf(list);
    return copy && StringLists::Append(*this, copy);
}

unsigned char CGNStringListList::InsertItem(int index, const CGNStringList& list) {
    CGNStringList* copy = CopyOf(list);
    return copy && StringLists::Insert(*this, index, copy);
}

void CGNStringListList::DeleteItem(int index) {
    StringLists::Delete(*this, index);
}

void CGNStringListList::FreeListItems() {
    StringLists::DestroyAll(*this);
}

void CGNStringListList::Free() {
    StringLists::DestroyAll(*this);
    CGNList::Free();
}
