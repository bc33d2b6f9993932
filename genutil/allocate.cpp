#include "genutil/allocate.h"

#include <cstdlib>

namespace genutil {

bool (*g_allocationGate)(std::size_t bytes) = nullptr;

void* Allocate(std::uint64_t bytes) {
    return Reallocate(nullptr, bytes);
}

void* Reallocate(void* memory, std::uint64_t bytes) {
    const auto size = static_cast<std::size_t>(bytes);
    if (size != bytes) return nullptr;
    if (!AllocationPasses(size)) return nullptr;
    return memory ? std::realloc(memory, size) : std::malloc(size);
}

void Release(void* memory) {
    std::free(memory);
}

}  // namespace genutil
