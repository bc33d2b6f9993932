// Counts the library's allocations within a scope, and makes some of them fail.
#pragma once

#include <atomic>
#include <climits>
#include <cstddef>

#include "genutil/allocate.h"

class AllocationGate {
  public:
    // The first `passing` allocations succeed, the next `failing` fail.
    explicit AllocationGate(int passing, int failing = INT_MAX) {
        s_count = 0;
        s_passing = passing;
        s_failing = failing;
        s_largest = 0;
        genutil::g_allocationGate = [](std::size_t bytes) {
            std::size_t largest = s_largest;
            while (bytes > largest && !s_largest.compare_exchange_weak(largest, bytes)) continue;
            const int behind = s_count++ - s_passing;
            return behind < 0 || behind >= s_failing;
        };
    }
    ~AllocationGate() { genutil::g_allocationGate = nullptr; }
    AllocationGate(const AllocationGate&) = delete;
    AllocationGate& operator=(const AllocationGate&) = delete;

    int Count() const { return s_count; }              // of all that were asked for
    std::size_t Largest() const { return s_largest; }  // in bytes; 0 without any

  private:
    inline static std::atomic<int> s_count;  // threads of the library allocate too
    inline static int s_passing, s_failing;
    inline static std::atomic<std::size_t> s_largest;
};
