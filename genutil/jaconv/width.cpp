// Half width and full width: ASCII characters and katakana, for which East Asian code sets have two
// codes.
#include <cstring>

#include "genutil/jaconv/jis.h"
#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/wide_convert.h"
#include "mbutil.h"

using namespace genutil;

namespace {

// The full-width characters of numbers.
struct NumberSet {
    int codeSet;
    std::uint16_t zero;  // "1" to "9" follow it
    std::uint16_t plus, minus, point, comma;
};
constexpr NumberSet kNumberSets[] = {
    {mbEucJp, 0xA3B0, 0xA1DC, 0xA1DD, 0xA1A5, 0xA1A4},
    {mbShiftJis, 0x824F, 0x817B, 0x817C, 0x8144, 0x8143},
    {mbGb2312, 0xA3B0, 0xA3AB, 0xA3AD, 0xA3AE, 0xA3AC},
    {mbEucCn, 0xA3B0, 0xA3AB, 0xA3AD, 0xA3AE, 0xA3AC},
    {mbBig5, 0xA2AF, 0xA1CF, 0xA1D0, 0xA144, 0xA141},
    {mbEucTw, 0xA4A1, 0xA2B0, 0xA2B1, 0xA1A5, 0xA1A2},
    {mbKorean, 0xA3B0, 0xA3AB, 0xA3AD, 0xA3AE, 0xA3AC},
    {mbEucKr, 0xA3B0, 0xA3AB, 0xA3AD, 0xA3AE, 0xA3AC},
};

const NumberSet* CurrentNumberSet() {
    EnsureInitialised();
    for (const NumberSet& set : kNumberSets)
        if (set.codeSet == g_codeSetState.codeSet) return &set;
    return nullptr;
}

// Returns 0 if there is none.
unsigned FullWidthNumber(const NumberSet& set, char c) {
    if (c >= '0' && c <= '9') return set.zero + static_cast<unsigned>(c - '0');
    switch (c) {
        case '+':
            return set.plus;
        case '-':
            return set.minus;
        case '.':
            return set.point;
        case ',':
            return set.comma;
        default:
            return 0;
    }
}

// Returns 0 if the pair is not one.
char HalfWidthNumber(const NumberSet& set, unsigned pair) {
    for (const char c : {'+', '-', '.', ','})
        if (pair == FullWidthNumber(set, c)) return c;
    return pair - set.zero < 10 ? static_cast<char>('0' + (pair - set.zero)) : '\0';
}

char* Copy(const char* src, char* dst) {
    return static_cast<char*>(std::memmove(dst, src, std::strlen(src) + 1));
}

char* PutPair(char* p, unsigned pair) {
    p[0] = static_cast<char>(pair >> 8);
    p[1] = static_cast<char>(pair);
    return p + 2;
}

char* PutJis(char* p, unsigned jis) {
    return PutPair(p, g_codeSetState.codeSet == mbShiftJis ? jis::ToShiftJis(jis) : jis);
}

unsigned ByteAt(const char* p, int index) {
    return static_cast<unsigned char>(p[index]);
}

// Returns the half-width katakana at the start of p, or 0 if there is none.
unsigned KanaAt(const char* p) {
    const unsigned first = ByteAt(p, 0);
    if (g_codeSetState.codeSet == mbShiftJis) return jis::IsKana(first) ? first : 0;
    return first == 0x8E && jis::IsKana(ByteAt(p, 1)) ? ByteAt(p, 1) : 0;
}

// Copies src. Among its first `length` bytes, characters of numbers are written by `put`.
template <class Put>
char* ConvertNumbers(const char* src, char* dst, int length, Put put) {
    if (src == nullptr || dst == nullptr) return nullptr;
    const NumberSet* const set = CurrentNumberSet();
    if (set == nullptr) return Copy(src, dst);
    char* out = dst;
    for (const char* p = src; *p != '\0';) {
        const char* const next = p + mbbytesinchar(reinterpret_cast<const unsigned char*>(p));
        if (next - p == length && put(*set, p, out)) p = next;
        while (p != next) *out++ = *p++;
    }
    *out = '\0';
    return dst;
}

// The full-width form of a character of ASCII, where the code set has a code of two bytes for it.
unsigned FullWidthCode(const CodePage& page, char c) {
    if (c < 0x20 || c > 0x7E) return 0;
    const unsigned code = page.Back(c == ' ' ? 0x3000u : 0xFF01u + static_cast<unsigned>(c - '!'));
    return code >= kLowestPairCell ? code : 0;
}

// In the Chinese and Korean code sets, which have ASCII twice.
char* WidenAsciiText(const char* src, char* dst) {
    const CodePage* const page = CurrentCodePage();
    if (!page || page->form != CodeForm::kPairs) return Copy(src, dst);
    char* out = dst;
    for (const char* p = src; *p != '\0';) {
        const char* const next = p + mbbytesinchar(reinterpret_cast<const unsigned char*>(p));
        if (const unsigned code = FullWidthCode(*page, *p)) {
            out = PutPair(out, code);
            p = next;
        }
        while (p != next) *out++ = *p++;
    }
    *out = '\0';
    return dst;
}

}  // namespace

char* mbHanToZenStr(const char* src, char* dst) {
    if (src == nullptr || dst == nullptr) return nullptr;
    EnsureInitialised();
    if (g_codeSetState.codeSet != mbEucJp && g_codeSetState.codeSet != mbShiftJis)
        return WidenAsciiText(src, dst);
    char* out = dst;
    for (const char* p = src; *p != '\0';) {
        const int length = mbbytesinchar(reinterpret_cast<const unsigned char*>(p));
        const char* const next = p + length;
        if (const unsigned kana = KanaAt(p)) {
            const unsigned mark = KanaAt(next);
            const unsigned joined = mark == 0 ? 0 : jis::JoinedKana(kana, mark);
            out = PutJis(out, joined != 0 ? joined : jis::FullWidthKana(kana));
            p = joined != 0 ? next + length : next;
        } else if (*p >= 0x20 && *p <= 0x7E) {
            out = PutJis(out, jis::FullWidthAscii(static_cast<unsigned>(*p)));
            p = next;
        } else {
            while (p != next) *out++ = *p++;
        }
    }
    *out = '\0';
    return dst;
}

char* ConvertMBNumberToSBNumber(const char* src, char* dst) {
    return ConvertNumbers(src, dst, 2, [](const NumberSet& set, const char* p, char*& out) {
        const char half = HalfWidthNumber(set, ByteAt(p, 0) << 8 | ByteAt(p, 1));
        if (half != '\0') *out++ = half;
        return half != '\0';
    });
}

char* ConvertSBNumberToMBNumber(const char* src, char* dst) {
    return ConvertNumbers(src, dst, 1, [](const NumberSet& set, const char* p, char*& out) {
        const unsigned full = FullWidthNumber(set, *p);
        if (full != 0) out = PutPair(out, full);
        return full != 0;
    });
}
