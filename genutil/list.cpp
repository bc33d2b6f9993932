// Lists of long: the array that every list stands on.
#include <cstring>

#include "genlist.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

static_assert(sizeof(void*) != 4 || sizeof(CGNList) == 20);

namespace {

constexpr char kSource[] = "genutil/genlist";
constexpr std::uint64_t kMostItems = 0x7FFFFFFF;  // the count is signed

// An array for `capacity` items; null, after the report, when there is none.
long* NewItems(std::uint64_t capacity, long line = __builtin_LINE()) {
    void* items = capacity <= kMostItems ? genutil::Allocate(capacity * sizeof(long)) : nullptr;
    genutil::AssertAllocation(items != nullptr, kSource, line);
    return static_cast<long*>(items);
}

void MoveItems(long* to, const long* from, int count) {
    if (count > 0) std::memmove(to, from, static_cast<std::size_t>(count) * sizeof(long));
}

}  // namespace

CGNList::CGNList(unsigned int initial, unsigned int increment)
    : m_items(nullptr), m_count(0), m_capacity(0), m_increment(increment ? increment : 10) {
    if (initial == 0) return;
    const std::uint64_t capacity =
        (std::uint64_t{initial} + m_increment - 1) / m_increment * m_increment;
    m_items = NewItems(capacity);
    if (m_items) m_capacity = static_cast<std::uint32_t>(capacity);
}

CGNList::CGNList(const CGNList& other) {
    CopyFrom(other);
}

CGNList& CGNList::operator=(const CGNList& other) {
    if (this == &other) return *this;
    Free();
    CopyFrom(other);
    return *this;
}

CGNList::~CGNList() {
    CGNList::Free();
}

void CGNList::CopyFrom(const CGNList& other) {
    m_increment = other.m_increment;
    m_items = other.m_capacity ? NewItems(other.m_capacity) : nullptr;
    m_capacity = m_items ? other.m_capacity : 0;
    m_count = m_items ? other.m_count : 0;
    MoveItems(m_items, other.m_items, m_count);
}

void CGNList::Free() {
    genutil::Release(m_items);
    m_items = nullptr;
    m_count = 0;
    m_capacity = 0;
}

unsigned char CGNList::AllocateItemList(unsigned int n) {
    if (n <= m_capacity) return 1;
    const std::uint64_t capacity = (std::uint64_t{n} + m_increment) / m_increment * m_increment;
    long* grown = NewItems(capacity);
    if (!grown) return 0;
    MoveItems(grown, m_items, m_count);
    genutil::Release(m_items);
    m_items = grown;
    m_capacity = static_cast<std::uint32_t>(capacity);
    return 1;
}

unsigned char CGNList::AddItem(long item) {
    return InsertItem(m_count, item);
}

unsigned char CGNList::InsertItem(int index, long item) {
    if (index < 0 || index > m_count) return 0;
    if (!AllocateItemList(static_cast<unsigned int>(m_count) + 1)) return 0;
    MoveItems(m_items + index + 1, m_items + index, m_count - index);
    m_items[index] = item;
    ++m_count;
    return 1;
}

unsigned char CGNList::SetItem(int index, long item) {
    if (index < 0 || index > m_count) return 0;
    if (index == m_count && !AllocateItemList(static_cast<unsigned int>(m_count) + 1)) return 0;
    m_items[index] = item;
    return 1;
}

void CGNList::DeleteItem(int index) {
    if (!IsItem(index)) return;
    MoveItems(m_items + index, m_items + index + 1, m_count - index - 1);
    --m_count;
}

unsigned char CGNList::SwapItems(int a, int b) {
    if (!IsItem(a) || !IsItem(b)) return 0;
    const long item = m_items[a];
    m_items[a] = m_items[b];
    m_items[b] = item;
    return 1;
}

long* CGNList::GetItemListPtr() const {
    return m_count < 1 ? nullptr : m_items;
}
