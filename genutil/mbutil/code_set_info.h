// One row per code set: its reported name, its flags, the Windows code page whose mapping it takes
// and the ANSI code page that it is.
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

// Null for a number that is not listed: it behaves as a single-byte code set without a name.
const CodeSetInfo* FindCodeSet(int codeSet);

}  // namespace genutil
