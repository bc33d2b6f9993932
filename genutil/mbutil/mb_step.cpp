// The functions of mbutil.h that step through text by the characters of a code set.
#include <cstring>

#include "genutil/mbutil/align.h"
#include "genutil/mbutil/character_blocks.h"
#include "genutil/mbutil/step.h"

using namespace genutil;

namespace {

// Returns strlen(s), but reads no byte from limit on.
std::size_t LengthUpTo(const char* s, std::size_t limit) {
    const void* end = limit ? std::memchr(s, 0, limit) : nullptr;
    return end ? static_cast<std::size_t>(static_cast<const char*>(end) - s) : limit;
}

// Separate, to keep the initialisation out of the hot path.
[[gnu::noinline]] int BytesInCharacterSlow(const unsigned char* p) {
    EnsureInitialised();
    return g_currentStep && p ? static_cast<int>(StepLength(*g_currentStep, p)) : 1;
}

unsigned AlignedIndex(const StepTable* table, const char* s, unsigned idx) {
    if (!g_codeSetState.multiByte) return idx;
    const std::size_t limit = LengthUpTo(s, idx);
    return static_cast<unsigned>(table ? AlignToCharacter(*table, Bytes(s), limit) : limit);
}

}  // namespace

int mblenExt(const unsigned char* p, unsigned n, int codeSet) {
    const StepTable* table = StepTableOf(codeSet);
    // Code set 3 has the flag but no sequences. As in single-byte code sets, p is not read, so the
    // length of a terminator is 1.
    if (!table) return 1;
    return p && n ? CharacterLength(*table, p, n) : 0;
}

int mb_mblen(const unsigned char* p, unsigned n) {
    if (!g_currentStep) EnsureInitialised();
    if (!g_currentStep) return 1;
    return p && n ? CharacterLength(*g_currentStep, p, n) : 0;
}

int isleadbyteExt(int c, int codeSet) {
    const StepTable* table = StepTableOf(codeSet);
    if (!table || c < 0 || c > 0xFF) return 0;
    const unsigned rule = table->first[static_cast<unsigned>(c)];
    return rule > 1 && !(rule & StepTable::kInvalid);
}

int mb_isleadbyte(int c) {
    EnsureInitialised();
    return isleadbyteExt(c, g_codeSetState.codeSet);
}

int mbmaxcharlenExt(int codeSet) {
    if (codeSet == mbEucJp) return 3;
    if (codeSet == mbEucTw) return 4;
    return StepTableOf(codeSet) ? 2 : 1;
}

int mbmaxcharlen() {
    EnsureInitialised();
    return mbmaxcharlenExt(g_codeSetState.codeSet);
}

int mbbytesinchartype(const unsigned char* p, int codeSet) {
    const StepTable* table = StepTableOf(codeSet);
    return table && p ? static_cast<int>(StepLength(*table, p)) : 1;
}

int mbbytesinchar(const unsigned char* p) {
    const StepTable* table = g_currentStep;
    if (__builtin_expect(table && p, 1)) return static_cast<int>(StepLength(*table, p));
    return BytesInCharacterSlow(p);
}

// The flag of the current code set, not of codeSet, determines whether idx is moved, because
// programs depend on it.
unsigned mbidxtype(const char* s, unsigned idx, int codeSet) {
    return AlignedIndex(StepTableOf(codeSet), s, idx);
}

unsigned mbidx(const char* s, unsigned idx) {
    EnsureInitialised();
    return AlignedIndex(g_currentStep, s, idx);
}

unsigned mbnextidx(const char* s, unsigned idx) {
    if (!g_currentStep) EnsureInitialised();
    std::size_t start = idx;
    std::size_t length = 1;
    if (const StepTable* table = g_currentStep) {
        start = AlignToCharacter(*table, Bytes(s), idx);
        length = StepLength(*table, Bytes(s) + start);
    }
    if (!s[start]) return 0;  // nothing after a terminator is read
    return s[start + length] ? static_cast<unsigned>(start + length) : 0;
}

char* mbnextchar(const char* s, unsigned idx) {
    const unsigned next = mbnextidx(s, idx);
    return next ? const_cast<char*>(s) + next : nullptr;
}

unsigned mbcharcount(const char* s, unsigned n) {
    EnsureInitialised();
    const std::size_t length = LengthUpTo(s, n);
    return static_cast<unsigned>(g_currentStep ? CountCharacters(*g_currentStep, Bytes(s), length)
                                               : length);
}

int mbcharcmp(const unsigned char* a, const unsigned char* b, unsigned n) {
    EnsureInitialised();
    if (!g_codeSetState.multiByte) {
        // Compares the first byte only, as a signed char, because programs depend on it.
        const auto x = static_cast<signed char>(a[0]), y = static_cast<signed char>(b[0]);
        return x < y ? -1 : x > y;
    }
    for (unsigned i = 0; i < n && a[i];) {
        // The lead byte alone determines how many bytes are compared.
        for (unsigned k = PromisedLength(g_currentStep, a + i); k > 0; --k, ++i) {
            if (a[i] != b[i]) return a[i] - b[i];
            if (!a[i]) return 0;
        }
    }
    return 0;
}

int ismbcprint(int c) {
    EnsureInitialised();
    if (c >= 0 && c <= 0x7F) return 1;
    return g_codeSetState.codeSet == mbShiftJis && c >= 0xA1 && c <= 0xDF;
}
