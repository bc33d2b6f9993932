#include "genutil/mbutil/exact_text.h"

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/block.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/wide.h"

namespace genutil {

namespace {

// The first bytes of a code set's pairs among which a code is not its character's own.
class AmbiguousLeads {
  public:
    explicit AmbiguousLeads(const CodePage& page) {
        for (unsigned lead = 0x80; lead < 256 && m_count <= kMost; ++lead)
            if (!page.returns[lead] && m_count++ < kMost)
                m_leads[m_count - 1] = _mm_set1_epi8(static_cast<char>(lead));
    }
    bool TooMany() const { return m_count > kMost; }

    // Where they are in 64 bytes.
    std::uint64_t Mask(const unsigned char* block) const {
        std::uint64_t mask = 0;
        for (unsigned i = 0; m_count && i < kBlock; i += 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + i));
            __m128i found = _mm_setzero_si128();
            for (unsigned k = 0; k < m_count; ++k)
                found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, m_leads[k]));
            mask |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(found))} << i;
        }
        return mask;
    }

  private:
    static constexpr unsigned kMost = 8;
    __m128i m_leads[kMost] = {};
    unsigned m_count = 0;
};

bool IsExactPairs(const CodePage& page, const unsigned char* text, std::size_t length) {
    const std::size_t ascii = AsciiRun(text, length);
    if (ascii == length) return true;
    const AmbiguousLeads ambiguous(page);
    if (ambiguous.TooMany()) return false;
    BlockWalker walker(*g_currentStep, text + ascii, length - ascii);
    while (walker.Next())
        if (walker.Invalid() || (ambiguous.Mask(walker.Data()) & walker.Starts())) return false;
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
        case CodeForm::kSingleByte:  // invalid bytes come back too
            return !std::memchr(page->returns, false, sizeof page->returns);
        case CodeForm::kPairs:
            return g_currentStep && IsExactPairs(*page, p, text.size());
        case CodeForm::kUtf8:
            return IsExactUtf8(p, p + text.size());
        default:
            return false;
    }
}

}  // namespace genutil
