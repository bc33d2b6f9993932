// Memory that the library owns. Failure is a null result; nothing throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace genutil {

// A size that does not fit in the address space fails as a full memory does.
void* Allocate(std::uint64_t bytes);
// Moves what is in memory, which is null or allocated here, to where there are so many bytes, if it
// has to; on failure it stays.
void* Reallocate(void* memory, std::uint64_t bytes);
void Release(void* memory);  // null is allowed

// For tests: asked before each allocation while not null; false makes that one fail.
extern bool (*g_allocationGate)(std::size_t bytes);

inline bool AllocationPasses(std::size_t bytes) {
    return !g_allocationGate || g_allocationGate(bytes);
}

// An object that programs may delete themselves; null when memory runs out.
template <class T, class... Arguments>
T* New(Arguments&&... arguments) {
    if (!AllocationPasses(sizeof(T))) return nullptr;
    return new (std::nothrow) T(std::forward<Arguments>(arguments)...);
}

// Releases what it holds when it goes out of scope.
template <class T>
class Owned {
  public:
    explicit Owned(T* memory = nullptr) : m_memory(memory) {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() { Release(m_memory); }
    T* Get() const { return m_memory; }
    T* Take() {  // the caller's from here on
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
