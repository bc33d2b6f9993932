// Conversion of text between code sets: choice of the converter, buffers and reports.
#include <cstddef>
#include <cstring>

#include "genutil/allocate.h"
#include "genutil/mbutil/align.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/code_set_info.h"
#include "genutil/mbutil/step.h"
#include "genutil/mbutil/transcode.h"
#include "osutil/platform/locale/locales.h"

using namespace genutil;

namespace {

// Pairs with a converter of their own. All others convert by way of Unicode.
struct Direct {
    int from, to;
    Converter convert;
};
constexpr Direct kDirect[] = {
    {mbJis, mbShiftJis, JisToShiftJis},
    {mbJis, mbEucJp, JisToEucJp},
    {mbEucJp, mbShiftJis, EucJpToShiftJis},
    {mbEucJp, mbJis, EucJpToJis},
    {mbShiftJis, mbEucJp, ShiftJisToEucJp},
    {mbShiftJis, mbJis, ShiftJisToJis},
    {mbBig5, mbEucTw, Big5ToEucTw},
    {mbEucTw, mbBig5, EucTwToBig5},
    {mb8859_2, mbWindows1250, Latin2ToWindows1250},
    {mbWindows1250, mb8859_2, Windows1250ToLatin2},
    {mb8859_5, mbWindows1251, Cyrillic8859ToWindows1251},
    {mbWindows1251, mb8859_5, Windows1251ToCyrillic8859},
};

Converter FindDirect(int from, int to) {
    if (from >= mbUtf16 || to >= mbUtf16) return nullptr;
    for (const Direct& row : kDirect)
        if (row.from == from && row.to == to) return row.convert;
    return nullptr;
}

// Copies as much as there is room for. Returns false if bytes remain.
bool Copy(Transfer& t) {
    const std::size_t left = static_cast<std::size_t>(t.srcEnd - t.src);
    const std::size_t room = static_cast<std::size_t>(t.dstEnd - t.dst);
    const std::size_t n = left < room ? left : room;
    std::memmove(t.dst, t.src, n);
    t.src += n;
    t.dst += n;
    return n == left;
}

bool HasEscapes(int codeSet) {
    return codeSet == mbJis || codeSet == mbIso2022Cn || codeSet == mbIso2022Kr;
}

// Returns the number of bytes in whole characters among the first n bytes of a longer text. Code
// sets with escape sequences are not supported here.
std::size_t WholeCharacters(const unsigned char* text, std::size_t n, int codeSet) {
    if (const StepTable* table = StepTableOf(codeSet)) return AlignToCharacter(*table, text, n);
    std::size_t start = n;
    if (codeSet == mbUtf8) {
        while (start > 0 && n - start < 3 && (text[start] & 0xC0) == 0x80) --start;
        return text[start] >= 0xC0 ? start : n;
    }
    if (codeSet != mbUtf16) return n;
    start = n & ~std::size_t{1};
    const bool cutsPair = start >= 2 && (text[start - 1] & 0xFC) == 0xD8;
    return cutsPair ? start - 2 : start;
}

bool Run(Transfer& t, int from, int to, bool* known) {
    *known = true;
    const bool fits = t.srcEnd - t.src <= t.dstEnd - t.dst;
    if (from == to && (fits || !HasEscapes(to))) {
        const auto room = static_cast<std::size_t>(t.dstEnd - t.dst);
        if (!fits) t.dstEnd = t.dst + WholeCharacters(t.src, room, to);
        return Copy(t);
    }
    if (const Converter convert = FindDirect(from, to)) return convert(t);
    return ConvertThroughUnicode(t, from, to, known);
}

std::size_t TerminatorSize(int codeSet) {
    return codeSet == mbUtf16 ? 2 : 1;
}

const unsigned char* Start(const char* s) {
    return reinterpret_cast<const unsigned char*>(s);
}

// Returns the code set of a locale's ANSI code page, or -1 if there is none.
int AnsiCodeSetOf(const char* localeName) {
    const bool named = localeName && *localeName;
    const LocaleRow* row = named ? FindLocaleByName(localeName) : g_currentLocaleRow.load();
    if (!row) return named ? -1 : UserAnsiCodeSet();
    const unsigned codePage = platform::AnsiCodePageOfLanguage(row->language);
    return codePage ? CodeSetOfCodePage(codePage) : row->codeSet;
}

}  // namespace

Converter genutil::RelatedConverter(int from, int to) {
    // Traditional Chinese uses the converter of the Cyrillic case because programs depend on it.
    if (to == mbWindows1251 && (from == mbBig5 || from == mbEucTw)) from = mb8859_5;
    const Converter convert = FindDirect(from, to);
    return convert ? convert : Copy;
}

int mbConvert(const char* src, size_t srcLength, int fromCodeSet, char* dst, size_t dstSize,
              int toCodeSet, mbConversion* conversion) {
    if (conversion) conversion->consumed = conversion->produced = conversion->lost = 0;
    const std::size_t terminator = TerminatorSize(toCodeSet);
    const bool named = FindCodeSet(fromCodeSet) && FindCodeSet(toCodeSet);
    if (!src || !dst || dstSize < terminator || !named) return 0;
    const auto out = reinterpret_cast<unsigned char*>(dst);
    Transfer t{Start(src), Start(src) + srcLength, out, out + dstSize - terminator,
               Losses(Start(src), conversion ? conversion->lostAt : nullptr,
                      conversion && conversion->lostAt ? conversion->lostAtSize : 0)};
    bool known;
    const bool all = Run(t, fromCodeSet, toCodeSet, &known);
    std::memset(t.dst, 0, terminator);
    if (conversion && known) {
        conversion->consumed = static_cast<std::size_t>(t.src - Start(src));
        conversion->produced = static_cast<std::size_t>(t.dst - out);
        conversion->lost = t.losses.Count();
    }
    return known && all;
}

size_t mbConvertBound(size_t srcLength, int fromCodeSet, int toCodeSet) {
    // The maximum that one byte can become: a half-width katakana between escape sequences in the
    // ISO 2022 encodings, and otherwise a four-byte character or a pair of units.
    const bool isCopy = fromCodeSet == toCodeSet;
    const std::size_t factor = isCopy ? 1 : HasEscapes(toCodeSet) ? 10 : 4;
    const std::size_t extra = isCopy ? TerminatorSize(toCodeSet) : 16;
    const std::size_t most = static_cast<std::size_t>(-1);
    return srcLength > (most - extra) / factor ? most : srcLength * factor + extra;
}

int mbConvertAlloc(const char* src, size_t srcLength, int fromCodeSet, char** out, int toCodeSet,
                   mbConversion* conversion) {
    if (!out) return 0;
    const std::size_t size = mbConvertBound(srcLength, fromCodeSet, toCodeSet);
    char* dst = static_cast<char*>(Allocate(size));
    if (!dst) return 0;
    mbConversion done = {nullptr, 0, 0, 0, 0};
    if (!conversion) conversion = &done;
    if (!mbConvert(src, srcLength, fromCodeSet, dst, size, toCodeSet, conversion)) {
        Release(dst);
        return 0;
    }
    char* fitted =
        static_cast<char*>(Reallocate(dst, conversion->produced + TerminatorSize(toCodeSet)));
    *out = fitted ? fitted : dst;
    return 1;
}

char* convertStrExt(const char* src, int fromCodeSet, char* dst, int toCodeSet) {
    const std::size_t length = std::strlen(src);
    const auto out = reinterpret_cast<unsigned char*>(dst);
    Transfer t{Start(src), Start(src) + length, out, out + 3 * length, {}};
    RelatedConverter(fromCodeSet, toCodeSet)(t);
    *t.dst = 0;
    return dst;
}

static char* ConvertJapanese(const char* src, int from, char* dst, int to) {
    if (!src || !dst) return nullptr;
    EnsureInitialised();
    const int current = g_codeSetState.codeSet;
    const bool japanese = current == mbEucJp || current == mbShiftJis;
    return convertStrExt(src, from, dst, japanese ? to : from);
}

char* UnixCodingToWindowsCodingExt(const char* src, char* dst) {
    return ConvertJapanese(src, mbEucJp, dst, mbShiftJis);
}

char* WindowsCodingToUnixCodingExt(const char* src, char* dst) {
    return ConvertJapanese(src, mbShiftJis, dst, mbEucJp);
}

int mbconvertnativestring(char* dst, const char* src, int toCodeSet) {
    if (!dst || !src) return 0;
    EnsureInitialised();
    const int from = g_codeSetState.codeSet;
    convertStrExt(src, from, dst, g_codeSetState.multiByte ? toCodeSet : from);
    return 1;
}

int mbConvertToUTF8(const char* src, char** out, const char* localeName) {
    const int codeSet = src ? AnsiCodeSetOf(localeName) : -1;
    return codeSet >= 0 && mbConvertAlloc(src, std::strlen(src), codeSet, out, mbUtf8, nullptr);
}

int mbConvertFromUTF8(const char* src, char** out) {
    const int codeSet = src ? UserAnsiCodeSet() : -1;
    return codeSet >= 0 && mbConvertAlloc(src, std::strlen(src), mbUtf8, out, codeSet, nullptr);
}
