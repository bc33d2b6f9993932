// Objects that a list owns through its items.
#pragma once

#include <new>
#include <utility>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

namespace genutil {

// A new object; null, after the report, when memory runs out.
template <class T, class... Arguments>
T* NewItem(Arguments&&... arguments) {
    const bool allowed = !g_allocationGate || g_allocationGate(sizeof(T));
    T* object = allowed ? new (std::nothrow) T{std::forward<Arguments>(arguments)...} : nullptr;
    AssertAllocation(object != nullptr, "genutil/genlist", __LINE__);
    return object;
}

inline long ItemOf(const void* object) {
    return reinterpret_cast<long>(object);
}

template <class T>
T* ObjectOf(long item) {
    return reinterpret_cast<T*>(item);
}

}  // namespace genutil
