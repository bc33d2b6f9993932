// What the lists share: room for items, and items that a list owns.
#pragma once

#include <cstdint>
#include <utility>

#include "genlist.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

namespace genutil {

constexpr std::uint32_t kListIncrement = 10;
constexpr std::uint64_t kMostItems = 0x7FFFFFFF;  // the count is signed

// Reports a failed allocation of the lists, and returns ok.
inline bool CheckListMemory(bool ok, long line = __builtin_LINE()) {
    return AssertAllocation(ok, "genutil/genlist", line);
}

// Works on the members of a CGNList, out of sight of its exported header.
struct ListStorage {
    // Items that memory is requested for when the capacity is this. Beyond a few blocks the
    // requests go up in steps of an eighth of their size, so that a list does not move with each
    // block.
    static std::uint64_t Requested(std::uint64_t capacity);

    // Gives the list a capacity that its items fit in.
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
    // The increments stay where they are.
    static void SwapItems(CGNList& a, CGNList& b) {
        std::swap(a.m_items, b.m_items);
        std::swap(a.m_count, b.m_count);
        std::swap(a.m_capacity, b.m_capacity);
    }
    static void RemoveItems(CGNList& list) { list.m_count = 0; }

  private:
    static void CheckLayout();
};

// Lists of pointers to objects of type T that belong to the list.
template <class T>
struct OwnedItems {
    static GNItem AsItem(const T* object) { return reinterpret_cast<GNItem>(object); }
    static T* At(const CGNList& list, int index) {
        return reinterpret_cast<T*>(list.CGNList::GetItem(index));
    }

    // Both take over the object, which is destroyed when it cannot be stored.
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
