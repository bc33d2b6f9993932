// What each system has for file_bench.cpp.
#pragma once

#include <string>

// Reads a whole file by the system's own calls into memory that it releases again.
bool ReadBare(const char* path);
