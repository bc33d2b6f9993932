// The single object of a class in the process. It is created by the first call and exists until it
// is freed.
#pragma once

#include <new>

#include "genutil/allocate.h"

namespace genutil {

// Returns the object, created by `make` if there is none. Returns null if allocation fails; the
// next call tries again. `make` is a lambda of the class, whose constructor may be private.
template <class T, class Make>
T* InstanceOf(T*& instance, Make make) {
    if (!instance && AllocationPasses(sizeof(T))) instance = make();
    return instance;
}

template <class T>
void FreeInstance(T*& instance) {
    delete instance;
    instance = nullptr;
}

}  // namespace genutil
