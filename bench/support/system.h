// Functions that each system implements for the measurements.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

// Returns the nanoseconds of an iteration by the finest available clock.
double TimeOf(const benchmark::BenchmarkReporter::Run& run);

// A search for bytes within bytes, and its name.
extern const char* const kFindBytesName;
const char* FindBytes(const char* text, std::size_t size, const std::string& wanted);
