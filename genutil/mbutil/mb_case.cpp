#include "genutil/mbutil/mb_case.h"

#include <atomic>
#include <cstddef>
#include <mutex>

#include "genutil/ascii.h"
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

constexpr std::size_t kTables = mbUtf8 + 1;
CaseTable g_tables[kTables];
std::atomic<bool> g_filled[kTables];
std::mutex g_filling;

}  // namespace

const CaseTable& CurrentCaseTable() {
    const int codeSet = g_codeSetState.codeSet;
    const std::size_t index =
        codeSet >= 0 && codeSet <= mbUtf8 ? static_cast<std::size_t>(codeSet) : 0;
    if (!g_filled[index].load(std::memory_order_acquire)) {
        const std::lock_guard<std::mutex> guard(g_filling);
        if (!g_filled[index].load(std::memory_order_relaxed)) {
            Fill(g_tables[index]);
            g_filled[index].store(true, std::memory_order_release);
        }
    }
    return g_tables[index];
}

}  // namespace genutil
