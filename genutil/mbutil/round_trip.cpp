#include "genutil/mbutil/round_trip.h"

#include <cstdint>

#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/character_blocks.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/simd.h"

namespace genutil {

namespace {

// Returns the mask of ambiguous first bytes among 64 bytes.
std::uint64_t MaskOfAmbiguous(const CodePage& page, const unsigned char* block) {
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < kBlock; i += 16) {
        const simd::Vector bytes = simd::Load(block + i);
        simd::Vector found = simd::Zero();
        for (unsigned k = 0; k < page.ambiguousCount; ++k)
            found = found | simd::Equal8(bytes, simd::Splat8(page.ambiguous[k]));
        mask |= std::uint64_t{simd::TopBits(found)} << i;
    }
    return mask;
}

bool IsExactByCharacters(const CodePage& page, const unsigned char* p, std::size_t left) {
    while (left > 0) {
        const int length = CharacterLength(*g_currentStep, p, static_cast<unsigned>(left));
        if (length < 0 || static_cast<std::size_t>(length) > left || !page.returns[*p])
            return false;
        p += length;
        left -= static_cast<std::size_t>(length);
    }
    return true;
}

bool IsExactPairs(const CodePage& page, const unsigned char* text, std::size_t length) {
    const std::size_t ascii = AsciiRun(text, length);
    if (length - ascii <= kBlock) return IsExactByCharacters(page, text + ascii, length - ascii);
    if (page.ambiguousCount > CodePage::kMostAmbiguous) return false;
    BlockWalker walker(*g_currentStep, text + ascii, length - ascii);
    while (walker.Next())
        if (walker.Invalid() || (MaskOfAmbiguous(page, walker.Data()) & walker.Starts()))
            return false;
    return true;
}

bool IsExactUtf8(const unsigned char* p, const unsigned char* end) {
    while (p < end) {
        if (*p < 0x80) {
            p += AsciiRun(p, static_cast<std::size_t>(end - p));
            continue;
        }
        const unsigned length = ReadUtf8(p, end).length;
        if (length == 0) return false;
        p += length;
    }
    return true;
}

}  // namespace

bool IsExactText(std::string_view text) {
    const CodePage* page = CurrentCodePage();
    if (!page) return false;
    const auto p = reinterpret_cast<const unsigned char*>(text.data());
    switch (page->form) {
        case CodeForm::kSingleByte:  // invalid bytes are also recovered
            return page->ambiguousCount == 0;
        case CodeForm::kPairs:
            return g_currentStep && IsExactPairs(*page, p, text.size());
        case CodeForm::kUtf8:
            return IsExactUtf8(p, p + text.size());
        default:
            return false;
    }
}

}  // namespace genutil
