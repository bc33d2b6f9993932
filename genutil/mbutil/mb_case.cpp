#include "genutil/mbutil/mb_case.h"

#include <atomic>
#include <cstddef>
#include <mutex>

#include "genutil/ascii.h"
#include "genutil/mbutil/code_set_info.h"
#include "genutil/mbutil/step.h"
#include "genutil/mbutil/wide_convert.h"

namespace genutil {
namespace {

using CaseOfWide = unsigned short (*)(unsigned short);

unsigned char MapByte(unsigned char byte, CaseOfWide map) {
    const char text[2] = {static_cast<char>(byte), 0};
    unsigned short wide;
    if (ToWideCharacter(&wide, text, 1) != 1) return byte;
    const unsigned short mapped = map(wide);
    char back[8];
    if (mapped == wide || ToNarrowCharacter(back, mapped) != 1) return byte;
    return static_cast<unsigned char>(back[0]);
}

void Fill(CaseTable& table) {
    for (unsigned b = 0; b < 256; ++b) {
        const auto byte = static_cast<unsigned char>(b);
        const char c = static_cast<char>(byte);
        const bool ascii = IsAscii(byte);
        // Above ASCII, only single-byte code sets have letters of one byte.
        const bool plain = g_currentStep != nullptr || g_codeSetState.codeSet == mbUtf8;
        table.upper[b] = ascii   ? static_cast<unsigned char>(AsciiUpper(c))
                         : plain ? byte
                                 : MapByte(byte, ToUpperWide);
        table.lower[b] = ascii   ? static_cast<unsigned char>(AsciiLower(c))
                         : plain ? byte
                                 : MapByte(byte, ToLowerWide);
    }
}

// The letters of ASCII alone: for the reserved code set and unlisted numbers, and while there is no
// memory for the characters of a code set.
constexpr CaseTable kAsciiCase = [] {
    CaseTable table{};
    for (unsigned b = 0; b < 256; ++b) {
        table.upper[b] = static_cast<unsigned char>(b >= 'a' && b <= 'z' ? b - 0x20 : b);
        table.lower[b] = static_cast<unsigned char>(b >= 'A' && b <= 'Z' ? b + 0x20 : b);
    }
    return table;
}();

constexpr std::size_t kTables = mbUtf8 + 1;
CaseTable g_tables[kTables];
std::atomic<bool> g_filled[kTables];
std::mutex g_filling;

}  // namespace

const CaseTable& CurrentCaseTable() {
    const int codeSet = g_codeSetState.codeSet;
    if (codeSet < 0 || codeSet > mbUtf8 || codeSet == mbReserved6 || !FindCodeSet(codeSet))
        return kAsciiCase;
    const auto index = static_cast<std::size_t>(codeSet);
    if (!g_filled[index].load(std::memory_order_acquire)) {
        const std::lock_guard<std::mutex> guard(g_filling);
        if (!g_filled[index].load(std::memory_order_relaxed)) {
            if (!CurrentCodePage()) return kAsciiCase;  // the next call tries again
            Fill(g_tables[index]);
            g_filled[index].store(true, std::memory_order_release);
        }
    }
    return g_tables[index];
}

}  // namespace genutil
