// One row per code set: its reported name, its properties and the ANSI code page that it
// corresponds to.
#pragma once

#include <cstdint>

#include "mbutil.h"

namespace genutil {

struct CodeSetInfo {
    std::uint8_t codeSet;
    const char* name;
    bool multiByte;
    bool japanese;
    std::uint16_t ansiCodePage;  // 0: not the ANSI code page of any locale
};

constexpr CodeSetInfo kCodeSets[] = {
#include "genutil/mbutil/code_sets.inc"
};

// Returns the row of a code set. Returns null for an unlisted number, which behaves as a
// single-byte code set without a name.
const CodeSetInfo* FindCodeSet(int codeSet);

}  // namespace genutil
