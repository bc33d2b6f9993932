// Allocation of memory that the library owns. Failure is a null result. Nothing throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace genutil {

// Returns null if allocation fails, or if the size does not fit in the address space.
void* Allocate(std::uint64_t bytes);
// Resizes a block, which may be null. The result may have another address. Returns null on failure,
// when the block is unchanged.
void* Reallocate(void* memory, std::uint64_t bytes);
void Release(void* memory);  // null is allowed

// A hook for tests, called before each allocation unless null. Returning false makes that
// allocation fail.
extern bool (*g_allocationGate)(std::size_t bytes);

inline bool AllocationPasses(std::size_t bytes) {
    return !g_allocationGate || g_allocationGate(bytes);
}

// Creates an object that programs may delete themselves. Returns null if allocation fails.
template <class T, class... Arguments>
T* New(Arguments&&... arguments) {
    if (!AllocationPasses(sizeof(T))) return nullptr;
    return new (std::nothrow) T(std::forward<Arguments>(arguments)...);
}

// Owner of a block, which it releases at the end of its scope.
template <class T>
class Owned {
  public:
    explicit Owned(T* memory = nullptr) : m_memory(memory) {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() { Release(m_memory); }
    T* Get() const { return m_memory; }
    T* Take() {  // the caller owns the result
        T* memory = m_memory;
        m_memory = nullptr;
        return memory;
    }
    void Reset(T* memory) {
        Release(m_memory);
        m_memory = memory;
    }

  private:
    T* m_memory;
};

}  // namespace genutil
