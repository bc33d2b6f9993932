// What must hold whatever the bytes are; a fuzz target ends the program where it does not.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}
