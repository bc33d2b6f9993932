// Lists of numbers or pointers: capacity, adding, removing.
#include <algorithm>
#include <bit>
#include <cstddef>

#include "genutil/list/storage.h"

using Storage = genutil::ListStorage;

// -- Capacity ------------------------------------------------------------------------------------

namespace genutil {

// The layout is part of the interface: programs derive from the class and access its members.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
void ListStorage::CheckLayout() {
    constexpr std::size_t p = sizeof(void*);
    static_assert(p != 4 || (sizeof(CGNList) == 20 && sizeof(CGNStringList) == 20 &&
                             sizeof(CGNStringListList) == 20 && sizeof(CGNCleanupList) == 20));
    static_assert(sizeof(CGNCleanupItem) == 2 * p && offsetof(CGNCleanupItem, m_argument) == p);
    static_assert(offsetof(CGNList, m_items) == p);
    static_assert(offsetof(CGNList, m_count) == 2 * p);
    static_assert(offsetof(CGNList, m_capacity) == 2 * p + 4);
    static_assert(offsetof(CGNList, m_increment) == 2 * p + 8);
}
#pragma GCC diagnostic pop

std::uint64_t ListStorage::Requested(std::uint64_t capacity) {
    if (capacity <= 64) return capacity;
    const std::uint64_t step = std::bit_floor(capacity) / 8;
    return (capacity + step - 1) / step * step;
}

bool ListStorage::Reallocate(CGNList& list, std::uint64_t capacity) {
    if (!CheckListMemory(capacity <= kMostItems)) return false;
    const std::uint64_t requested = Requested(capacity);
    if (!list.m_items || requested != Requested(list.m_capacity)) {
        auto* items =
            static_cast<GNItem*>(genutil::Reallocate(list.m_items, requested * sizeof(GNItem)));
        if (!CheckListMemory(items)) return false;
        list.m_items = items;
    }
    list.m_capacity = static_cast<std::uint32_t>(capacity);
    return true;
}

void ListStorage::Copy(CGNList& to, const CGNList& from) {
    to.m_increment = from.m_increment;
    if (from.m_capacity == 0 || !Reallocate(to, from.m_capacity)) return;
    std::copy_n(from.m_items, from.m_count, to.m_items);
    to.m_count = from.m_count;
}

}  // namespace genutil

unsigned char CGNList::AllocateItemList(unsigned int n) {
    if (n <= m_capacity) return 1;
    return Storage::Reallocate(*this, (std::uint64_t{n} / m_increment + 1) * m_increment);
}

// -- Construction and destruction ----------------------------------------------------------------

CGNList::CGNList() : CGNList(genutil::kListIncrement, genutil::kListIncrement) {}

CGNList::CGNList(unsigned int initial, unsigned int increment)
    : m_items(nullptr),
      m_count(0),
      m_capacity(0),
      m_increment(increment != 0 ? increment : genutil::kListIncrement) {
    const std::uint64_t blocks = (std::uint64_t{initial} + m_increment - 1) / m_increment;
    if (blocks != 0) Storage::Reallocate(*this, blocks * m_increment);
}

CGNList::CGNList(const CGNList& other)
    : m_items(nullptr), m_count(0), m_capacity(0), m_increment(0) {
    Storage::Copy(*this, other);
}

CGNList& CGNList::operator=(const CGNList& other) {
    if (this == &other) return *this;
    Free();
    Storage::Copy(*this, other);
    return *this;
}

CGNList::~CGNList() {
    CGNList::Free();
}

void CGNList::Free() {
    genutil::Release(m_items);
    m_items = nullptr;
    m_count = 0;
    m_capacity = 0;
}

// -- Items ---------------------------------------------------------------------------------------

unsigned char CGNList::AddItem(GNItem item) {
    return Storage::Append(*this, item);
}

unsigned char CGNList::InsertItem(int index, GNItem item) {
    if (index < 0 || index > m_count || !Storage::MakeRoomForOne(*this)) return 0;
    std::copy_backward(m_items + index, m_items + m_count, m_items + m_count + 1);
    m_items[index] = item;
    ++m_count;
    return 1;
}

unsigned char CGNList::SetItem(int index, GNItem item) {
    if (index < 0 || index > m_count) return 0;
    // The place after the last item can be set before the item is counted.
    if (index == m_count && !Storage::MakeRoomForOne(*this)) return 0;
    m_items[index] = item;
    return 1;
}

void CGNList::DeleteItem(int index) {
    if (index < 0 || index >= m_count) return;
    std::copy(m_items + index + 1, m_items + m_count, m_items + index);
    --m_count;
}

unsigned char CGNList::SwapItems(int a, int b) {
    if (a < 0 || b < 0 || a >= m_count || b >= m_count) return 0;
    std::swap(m_items[a], m_items[b]);
    return 1;
}

GNItem* CGNList::GetItemListPtr() const {
    return m_count < 1 ? nullptr : m_items;
}
