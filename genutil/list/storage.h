// The storage of lists: memory for items, and items that a list owns.
#pragma once

#include <cstdint>
#include <utility>

#include "genlist.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

namespace genutil {

constexpr std::uint32_t kListIncrement = 10;
constexpr std::uint64_t kMostItems = 0x7FFFFFFF;  // the count is signed

// Reports a failed allocation of a list. Returns ok.
inline bool CheckListMemory(bool ok, long line = __builtin_LINE()) {
    return AssertAllocation(ok, "genutil/genlist", line);
}

// Functions on the members of a CGNList that its exported header does not show.
struct ListStorage {
    // Returns the number of items to allocate for a capacity. Beyond a few blocks, sizes increase
    // in steps of an eighth, so that a growing list is not moved for each block.
    static std::uint64_t Requested(std::uint64_t capacity);

    // Gives the list a capacity, which must not be below its item count.
    static bool Reallocate(CGNList& list, std::uint64_t capacity);

    static bool MakeRoomForOne(CGNList& list) {
        const auto count = static_cast<std::uint32_t>(list.m_count);
        return count < list.m_capacity || list.AllocateItemList(count + 1);
    }
    static bool Append(CGNList& list, GNItem item) {
        if (!MakeRoomForOne(list)) return false;
        list.m_items[list.m_count++] = item;
        return true;
    }
    static void Copy(CGNList& to, const CGNList& from);
    // The increments are not exchanged.
    static void SwapItems(CGNList& a, CGNList& b) {
        std::swap(a.m_items, b.m_items);
        std::swap(a.m_count, b.m_count);
        std::swap(a.m_capacity, b.m_capacity);
    }
    static void RemoveItems(CGNList& list) { list.m_count = 0; }

  private:
    static void CheckLayout();
};

// Lists of pointers to objects of type T that the list owns.
template <class T>
struct OwnedItems {
    static GNItem AsItem(const T* object) { return reinterpret_cast<GNItem>(object); }
    static T* At(const CGNList& list, int index) {
        return reinterpret_cast<T*>(list.CGNList::GetItem(index));
    }

    // Append() and Insert() take ownership of the object and delete it if it cannot be stored.
    static bool Append(CGNList& list, T* object) {
        return ListStorage::Append(list, AsItem(object)) || Refuse(object);
    }
    static bool Insert(CGNList& list, int index, T* object) {
        return list.CGNList::InsertItem(index, AsItem(object)) || Refuse(object);
    }

    static void Delete(CGNList& list, int index) {
        delete At(list, index);
        list.CGNList::DeleteItem(index);
    }
    static void DestroyAll(CGNList& list) {
        for (int i = 0; i < list.GetCount(); ++i) delete At(list, i);
        ListStorage::RemoveItems(list);
    }

  private:
    static bool Refuse(T* object) {
        delete object;
        return false;
    }
};

static_assert(sizeof(GNItem) == sizeof(void*));

}  // namespace genutil
