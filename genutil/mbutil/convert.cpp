// Conversion of text between code sets: choice of the converter, buffers and reports.
#include <cstddef>
#include <cstring>

#include "genutil/allocate.h"
#include "genutil/mbutil/align.h"
#include "genutil/mbutil/byte_order_mark.h"
#include "genutil/mbutil/code_page.h"
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

// Copies as much as there is room for. Returns false if bytes remain.
bool Copy(Transfer& t) {
    const std::size_t left = static_cast<std::size_t>(t.srcEnd - t.src);
    const std::size_t room = static_cast<std::size_t>(t.dstEnd - t.dst);
    const std::size_t n = left < room ? left : room;
    std::memmove(t.dst, t.src, n);
    t.src += n;
    t.dst += n;
    t.stop = n == left ? Stop::kDone : Stop::kFull;
    return n == left;
}

// Text that remains in its code set keeps its byte-order mark, and with it its byte order.
bool CopyText(Transfer& t, int codeSet) {
    const CodePage* page = FindListedCodePage(codeSet);
    t.stop = Stop::kUnknown;
    if (!page) return false;
    for (const ByteOrderMark& mark : kByteOrderMarks)
        if (mark.form == page->form && mark.selects != mark.form && mark.IsAt(t.src, t.srcEnd)) {
            page = PageOfForm(mark.selects);
            break;
        }
    if (HasEscapes(codeSet)) return ConvertPages(t, *page, *page);
    return CopyValid(t, *page);
}

bool Run(Transfer& t, int from, int to) {
    if (from == to) return CopyText(t, from);
    if (const Converter convert = FindDirectConverter(from, to)) return convert(t);
    return ConvertThroughUnicode(t, from, to);
}

std::size_t TerminatorSize(int codeSet) {
    return codeSet == mbUtf16 || codeSet == mbUtf16Be   ? 2
           : codeSet == mbUtf32 || codeSet == mbUtf32Be ? 4
                                                        : 1;
}

const unsigned char* Start(const char* s) {
    return reinterpret_cast<const unsigned char*>(s);
}

// Shrinks a buffer to the bytes in use.
char* Fitted(char* buffer, std::size_t used) {
    char* const fitted = static_cast<char*>(Reallocate(buffer, used));
    return fitted ? fitted : buffer;
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

Converter genutil::FindDirectConverter(int from, int to) {
    if (from >= mbUtf16 || to >= mbUtf16) return nullptr;
    for (const Direct& row : kDirect)
        if (row.from == from && row.to == to) return row.convert;
    return nullptr;
}

Converter genutil::FindRelatedConverter(int from, int to) {
    // Traditional Chinese uses the converter of the Cyrillic case because programs depend on it.
    if (to == mbWindows1251 && (from == mbBig5 || from == mbEucTw)) from = mb8859_5;
    return FindDirectConverter(from, to);
}

Converter genutil::RelatedConverter(int from, int to) {
    const Converter convert = FindRelatedConverter(from, to);
    return convert ? convert : Copy;
}

int mbConvert(const char* src, size_t srcLength, int fromCodeSet, char* dst, size_t dstSize,
              int toCodeSet, mbConversion* conversion) {
    if (conversion) conversion->consumed = conversion->produced = conversion->lost = 0;
    const std::size_t terminator = TerminatorSize(toCodeSet);
    const bool named = FindCodeSet(fromCodeSet) && FindCodeSet(toCodeSet);
    if (!src && srcLength == 0) src = "";
    if (!src || !dst || dstSize < terminator || !named) return 0;
    const auto out = reinterpret_cast<unsigned char*>(dst);
    Transfer t{Start(src), Start(src) + srcLength, out, out + dstSize - terminator,
               Losses(Start(src), conversion ? conversion->lostAt : nullptr,
                      conversion && conversion->lostAt ? conversion->lostAtSize : 0)};
    const bool all = Run(t, fromCodeSet, toCodeSet);
    std::memset(t.dst, 0, terminator);
    if (conversion) {
        conversion->consumed = static_cast<std::size_t>(t.src - Start(src));
        conversion->produced = static_cast<std::size_t>(t.dst - out);
        conversion->lost = t.losses.Count();
    }
    return all;
}

size_t mbConvertBound(size_t srcLength, int, int toCodeSet) {
    // The maximum that one byte can become: a half-width katakana between escape sequences in the
    // ISO 2022 encodings, and otherwise a four-byte character or a pair of units.
    const std::size_t factor = HasEscapes(toCodeSet) ? 10 : 4;
    const std::size_t extra = 16;
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
    *out = Fitted(dst, conversion->produced + TerminatorSize(toCodeSet));
    return 1;
}

char* convertStrExt(const char* src, int fromCodeSet, char* dst, int toCodeSet) {
    const std::size_t length = std::strlen(src);
    const auto out = reinterpret_cast<unsigned char*>(dst);
    Converter convert = RelatedConverter(fromCodeSet, toCodeSet);
    Owned<char> copy;
    // Converters write ahead of what they have read, so overlapping text is moved out of their way.
    if (convert != Copy && Start(src) < out + 3 * length + 1 && out < Start(src) + length + 1) {
        copy.Reset(static_cast<char*>(Allocate(std::uint64_t{length} + 1)));
        if (copy.Get())
            src = static_cast<const char*>(std::memcpy(copy.Get(), src, length + 1));
        else
            convert = Copy;
    }
    Transfer t{Start(src), Start(src) + length, out, out + 3 * length, {}};
    t.threefold = true;
    convert(t);
    if (t.stop == Stop::kUnknown) Copy(t);
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
    const std::size_t length = src ? std::strlen(src) : 0;
    if (codeSet < 0 || !out) return 0;
    const std::size_t size = mbConvertBound(length, mbUtf8, codeSet);
    Owned<char> dst(static_cast<char*>(Allocate(size)));
    const auto begin = reinterpret_cast<unsigned char*>(dst.Get());
    if (!begin) return 0;
    Transfer t{Start(src), Start(src) + length, begin, begin + size - 1, {}};
    t.substitute = '?';  // the default character of every ANSI code page
    if (!Run(t, mbUtf8, codeSet)) return 0;
    *t.dst++ = 0;
    *out = Fitted(dst.Take(), static_cast<std::size_t>(t.dst - begin));
    return 1;
}
