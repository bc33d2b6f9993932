// The numbers shared by number_bench.cpp and the peers on each system.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstring>

// In the C spelling and in German.
constexpr const char* kC[] = {"1234567.891", "-98765.43", "12.5",
                              "1000000",     "-0.125",    "123456789012.25"};
constexpr const char* kGerman[] = {"1.234.567,891", "-98.765,43", "12,5",
                                   "1.000.000",     "-0,125",     "123.456.789.012,25"};
constexpr const char* kMoney[] = {"1234567.89 EUR", "-98765.43 EUR", "12.50 EUR",
                                  "1000000 EUR",    "0.25 EUR",      "123456789012.25 EUR"};

// Returns the next of six texts, so that no branch becomes fully predictable.
template <std::size_t n>
const char* Next(const char* const (&texts)[n]) {
    static std::size_t next = 0;
    return texts[next++ % n];
}
