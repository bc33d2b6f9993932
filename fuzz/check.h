// Conditions that hold for any bytes. A fuzz target ends the program if one does not.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}
