// Case-insensitive comparison, collation, and case mapping of whole texts.
#include <cstddef>
#include <cstring>

#include "genutil/allocate.h"
#include "genutil/ascii.h"
#include "genutil/assert_allocation.h"
#include "genutil/mbutil/align.h"
#include "genutil/mbutil/character_blocks.h"
#include "genutil/mbutil/mb_case.h"
#include "genutil/mbutil/same_prefix.h"
#include "genutil/mbutil/wide_convert.h"
#include "osutil/platform/locale/locales.h"

using namespace genutil;

namespace {

unsigned StepHere(const unsigned char* p) {
    return g_currentStep ? StepLength(*g_currentStep, p) : 1;
}

unsigned MapCase(char* s, const unsigned char* map) {
    if (!s) return 0;
    const auto text = reinterpret_cast<unsigned char*>(s);
    std::size_t i = 0;
    while (text[i]) {
        const unsigned step = text[i] < 0x80 ? 1 : StepHere(text + i);
        if (step == 1) text[i] = map[text[i]];
        i += step;
    }
    return static_cast<unsigned>(i);
}

// A text in the current code set as 16-bit characters, on the stack if it is short. Text that is
// invalid is carried byte by byte, so that the order of two texts never depends on a third.
class WideCopy {
  public:
    explicit WideCopy(const char* text) {
        const std::size_t bytes = std::strlen(text);
        if (bytes >= kOnStack) {
            m_buffer = m_heap =
                static_cast<unsigned short*>(Allocate((std::uint64_t{bytes} + 1) * sizeof *m_heap));
            AssertAllocation(m_heap != nullptr, "genutil/mbutil", __LINE__);
        }
        if (!m_buffer || ToWide(m_buffer, bytes + 1, text, bytes) >= 0) return;
        ToWideBytewise(m_buffer, text, bytes);
        m_buffer[bytes] = 0;
    }
    ~WideCopy() { Release(m_heap); }
    WideCopy(const WideCopy&) = delete;
    WideCopy& operator=(const WideCopy&) = delete;
    const unsigned short* Text() const { return m_buffer; }  // null if allocation failed

  private:
    static constexpr std::size_t kOnStack = 256;
    unsigned short m_stack[kOnStack];
    unsigned short* m_heap = nullptr;
    unsigned short* m_buffer = m_stack;
};

}  // namespace

int mbstricmp(const char* a, const char* b) {
    if (!a || !b) return 0;
    EnsureInitialised();
    const unsigned char *x = Bytes(a), *y = Bytes(b);
    const std::size_t same =
        SamePrefixNoCase(x, y, static_cast<std::size_t>(-1), g_currentStep, AlignToCharacter);
    const unsigned char* lower = CurrentCaseTable().lower;
    for (x += same, y += same; *x && *y;) {
        const unsigned length = StepHere(x), other = StepHere(y);
        if (length != other) return length > other ? 1 : -1;
        for (unsigned i = 0; i < length; ++i) {
            // Only single-byte characters have case here. Bytes are ordered as signed chars.
            const auto p = static_cast<signed char>(length == 1 ? lower[x[i]] : x[i]);
            const auto q = static_cast<signed char>(length == 1 ? lower[y[i]] : y[i]);
            if (p != q) return p > q ? 1 : -1;
        }
        x += length;
        y += length;
    }
    return *x ? 1 : *y ? -1 : 0;
}

int mbstrnicmp(const char* a, const char* b, unsigned n) {
    if (!a || !b) return 0;
    EnsureInitialised();
    const unsigned char *x = Bytes(a), *y = Bytes(b);
    const unsigned char* lower = CurrentCaseTable().lower;
    std::size_t i = SamePrefixNoCase(x, y, n, g_currentStep, AlignToPromise);
    while (i < n && x[i]) {
        const unsigned promised = PromisedLength(g_currentStep, x + i);
        if (promised == 1) {
            if (lower[x[i]] != lower[y[i]]) return lower[x[i]] - lower[y[i]];
            ++i;
            continue;
        }
        // The lead byte alone determines how many bytes are compared, but none after a terminator.
        for (unsigned k = promised; k > 0; --k, ++i) {
            if (x[i] != y[i]) return x[i] - y[i];
            if (!x[i]) return 0;
        }
    }
    // A text that ends exactly at n sorts before a longer one, because programs depend on it.
    return x[i] || !y[i] ? 0 : -1;
}

unsigned mbstrtoupper(char* s) {
    EnsureInitialised();
    return MapCase(s, CurrentCaseTable().upper);
}

unsigned mbstrtolower(char* s) {
    EnsureInitialised();
    return MapCase(s, CurrentCaseTable().lower);
}

int mbstrcoll(const char* a, const char* b) {
    EnsureInitialised();
    if (!platform::HasCollation()) return std::strcmp(a, b);
    const WideCopy wideA(a), wideB(b);
    if (!wideA.Text() || !wideB.Text()) return std::strcmp(a, b);
    return CollateWide(wideA.Text(), wideB.Text());
}
