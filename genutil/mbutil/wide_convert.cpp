#include "genutil/mbutil/wide_convert.h"

#include <cstring>

#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/character_table.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/pivot.h"
#include "osutil/platform/locale/locales.h"

namespace genutil {

namespace {

static_assert(sizeof(unsigned short) == 2);

Source SourceOf(const char* text, std::size_t bytes) {
    const auto start = reinterpret_cast<const unsigned char*>(text);
    const void* terminator = std::memchr(text, 0, bytes);
    return {start, terminator ? static_cast<const unsigned char*>(terminator) : start + bytes};
}

const unsigned char* Bytes(const unsigned short* units) {
    return reinterpret_cast<const unsigned char*>(units);
}
unsigned char* Bytes(unsigned short* units) {
    return reinterpret_cast<unsigned char*>(units);
}

std::size_t CharactersIn(const unsigned short* text) {
    const unsigned short* end = text;
    while (*end) ++end;
    return static_cast<std::size_t>(end - text);
}

// Bytes unknown to the code set are represented by units that are not a character.
bool IsRawByte(const unsigned char* unit, const unsigned char* end) {
    const unsigned value = unit < end ? LoadUnit(unit) : 0;
    return value > kRawByte && value <= kRawByte + 0xFFu;
}

enum class Unknown { kRefuse, kReplace };

// Encodes units to dst. At a bad unit it writes the raw byte, or acts according to `unknown`.
Stop EncodeText(const CodePage& page, const unsigned char*& units, const unsigned char* end,
                Sink& dst, Unknown unknown) {
    static const unsigned short question = '?';
    for (;;) {
        const Stop stop = Encode(page, units, end, dst);
        if (stop != Stop::kBad) return stop;
        if (IsRawByte(units, end)) {
            CloseText(page, dst);
            if (dst.at == dst.end) return Stop::kFull;
            *dst.at++ = static_cast<unsigned char>(LoadUnit(units));
        } else if (unknown == Unknown::kRefuse) {
            return Stop::kBad;
        } else {
            const unsigned char* at = Bytes(&question);
            if (Encode(page, at, at + 2, dst) != Stop::kDone) return Stop::kFull;
        }
        const bool pair = IsHighSurrogate(LoadUnit(units)) && end - units >= 4 &&
                          IsLowSurrogate(LoadUnit(units + 2));
        units += pair ? 4 : 2;
    }
}

long Narrow(const CodePage* page, char* out, std::size_t limit, const unsigned short* text,
            const unsigned char* end, Unknown unknown) {
    if (!page) return -1;
    const auto start = reinterpret_cast<unsigned char*>(out);
    Sink dst{start, start + limit};
    const unsigned char* units = Bytes(text);
    if (EncodeText(*page, units, end, dst, unknown) == Stop::kBad) return -1;
    CloseText(*page, dst);
    if (dst.at < dst.end) *dst.at = 0;
    return static_cast<long>(dst.at - start);
}

}  // namespace

// A NUL-terminated text cannot contain UTF-16, so that code set counts as unlisted here.
const CodePage* CurrentCodePage() {
    EnsureInitialised();
    const int codeSet = g_codeSetState.codeSet;
    return FindCodePage(codeSet == mbUtf16 ? mbWestern : codeSet);
}

std::int64_t WideLength(const char* text, std::size_t bytes) {
    const CodePage* page = CurrentCodePage();
    if (!page) return -1;
    Source src = SourceOf(text, bytes);
    unsigned char chunk[1024];
    for (std::int64_t length = 0;;) {
        unsigned char* out = chunk;
        const Stop stop = Decode(*page, src, out, chunk + sizeof chunk);
        if (stop == Stop::kBad) return -1;
        length += static_cast<std::int64_t>((out - chunk) / 2);
        if (stop == Stop::kDone) return length;
    }
}

namespace {

long Widen(const CodePage* page, unsigned short* out, std::size_t limit, const char* text,
           std::size_t bytes) {
    if (!page) return -1;
    Source src = SourceOf(text, bytes);
    unsigned char* end = Bytes(out);
    if (Decode(*page, src, end, Bytes(out + limit)) == Stop::kBad) return -1;
    const std::size_t stored = static_cast<std::size_t>(end - Bytes(out)) / 2;
    if (stored < limit) out[stored] = 0;
    return static_cast<long>(stored);
}

}  // namespace

long ToWide(unsigned short* out, std::size_t limit, const char* text, std::size_t bytes) {
    return Widen(CurrentCodePage(), out, limit, text, bytes);
}
long FromUtf8(unsigned short* out, const char* text, std::size_t bytes) {
    return Widen(FindListedCodePage(mbUtf8), out, bytes, text, bytes);
}

void ToWideBytewise(unsigned short* out, const char* text, std::size_t bytes) {
    const CodePage* page = CurrentCodePage();
    const auto p = reinterpret_cast<const unsigned char*>(text);
    for (std::size_t i = 0; i < bytes; ++i) {
        const bool tables =
            page && (page->form == CodeForm::kSingleByte || page->form == CodeForm::kPairs);
        const unsigned character = tables ? page->bytes[p[i]] : p[i] < 0x80 ? p[i] : kNoCharacter;
        out[i] =
            static_cast<unsigned short>(character != kNoCharacter ? character : kRawByte + p[i]);
    }
}

std::int64_t NarrowLength(const unsigned short* text, std::size_t count) {
    const CodePage* page = CurrentCodePage();
    if (!page) return -1;
    const unsigned char* units = Bytes(text);
    const unsigned char* const end = Bytes(text + count);
    unsigned char chunk[512];
    Sink dst{chunk, chunk + sizeof chunk};
    for (std::int64_t length = 0;;) {
        const Stop stop = EncodeText(*page, units, end, dst, Unknown::kRefuse);
        if (stop == Stop::kBad) return -1;
        if (stop == Stop::kDone) CloseText(*page, dst);
        length += static_cast<std::int64_t>(dst.at - chunk);
        if (stop == Stop::kDone) return length;
        dst.at = chunk;
    }
}

long ToNarrow(char* out, std::size_t limit, const unsigned short* text, std::size_t count) {
    return Narrow(CurrentCodePage(), out, limit, text, Bytes(text + count), Unknown::kRefuse);
}
long ToUtf8(char* out, std::size_t limit, const unsigned short* text, std::size_t count) {
    return Narrow(FindListedCodePage(mbUtf8), out, limit, text, Bytes(text + count),
                  Unknown::kRefuse);
}

long ToNarrowLossy(char* out, std::size_t limit, const unsigned short* text, std::size_t count) {
    return Narrow(CurrentCodePage(), out, limit, text, Bytes(text + count), Unknown::kReplace);
}

std::int64_t NarrowLength(const unsigned short* text) {
    return NarrowLength(text, CharactersIn(text));
}
long ToNarrow(char* out, std::size_t limit, const unsigned short* text) {
    return ToNarrow(out, limit, text, CharactersIn(text));
}

std::size_t LongestNarrow() {
    const CodePage* page = CurrentCodePage();
    if (!page || page->base) return 0;
    return page->form == CodeForm::kUtf8 ? 3 : page->longest;
}

int ToWideCharacter(unsigned short* out, const char* text, std::size_t bytes) {
    const CodePage* page = CurrentCodePage();
    if (!page) return -1;
    if (bytes == 0 || *text == 0) return 0;
    const std::size_t longest = bytes < 16 ? bytes : 16;  // escape sequences and a character
    Source src = SourceOf(text, longest);
    unsigned char unit[2];
    unsigned char* end = unit;
    // Escape sequences after the character would make it seem longer, so the text is offered byte
    // by byte.
    const unsigned char* const textEnd = src.end;
    for (src.end = src.at + 1; src.end <= textEnd; ++src.end) {
        Source attempt = src;
        if (Decode(*page, attempt, end, unit + 2) == Stop::kBad) continue;
        if (end == unit) continue;
        *out = static_cast<unsigned short>(LoadUnit(unit));
        return static_cast<int>(attempt.at - src.at);
    }
    return -1;
}

int ToNarrowCharacter(char* out, unsigned short character) {
    const CodePage* page = CurrentCodePage();
    if (!page) return -1;
    unsigned char bytes[16];
    Sink dst{bytes, bytes + sizeof bytes};
    dst.state.begun = 1;  // the announcement of a text is not part of a character
    const unsigned short text[1] = {character};
    const unsigned char* units = Bytes(text);
    if (EncodeText(*page, units, Bytes(text + 1), dst, Unknown::kRefuse) != Stop::kDone) return -1;
    CloseText(*page, dst);
    const std::size_t length = static_cast<std::size_t>(dst.at - bytes);
    if (length > 4) return -1;  // a character between escape sequences
    std::memcpy(out, bytes, length);
    return static_cast<int>(length);
}

unsigned short ToUpperWide(unsigned short character) {
    return PageOfCharacter(character).upper[character & 0xFF];
}
unsigned short ToLowerWide(unsigned short character) {
    return PageOfCharacter(character).lower[character & 0xFF];
}

int CollateWide(const unsigned short* a, const unsigned short* b) {
    return platform::Collate(a, CharactersIn(a), b, CharactersIn(b));
}

}  // namespace genutil
