// What each system has for the measurements.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

// Nanoseconds of an iteration by the finest clock there is.
double TimeOf(const benchmark::BenchmarkReporter::Run& run);

// The search for bytes in bytes, and its name.
extern const char* const kFindBytesName;
const char* FindBytes(const char* text, std::size_t size, const std::string& wanted);
