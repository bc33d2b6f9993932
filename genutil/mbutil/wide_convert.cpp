#include "genutil/mbutil/wide_convert.h"

#include <cstring>

#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/character_table.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/pivot.h"
#include "genutil/mbutil/step.h"
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

// Returns the length of a character that has a valid form but is not in the code set, or 1 for a
// byte that begins no character.
unsigned UnassignedLength(const Source& src) {
    if (!g_currentStep) return 1;
    const auto left = static_cast<unsigned>(src.end - src.at);
    const int length = CharacterLength(*g_currentStep, src.at, left);
    return length > 0 && static_cast<unsigned>(length) <= left ? static_cast<unsigned>(length) : 1;
}

// Same as ReadGroupIso2022(), for any code set.
Group ReadGroup(const CodePage& page, Source& src) {
    const unsigned byte = *src.at;
    if (page.base) return ReadGroupIso2022(page, src);
    unsigned character = byte, length = 1;
    if (page.form == CodeForm::kUtf8) {
        if (byte >= 0x80) {
            character = kNoCharacter;
            length = ReadUtf8(src.at, src.end).length;
        }
    } else {
        character = page.bytes[byte];
        if (character == kNoCharacter) length = ReadCode(page, src.at, src.end).length;
    }
    if (length == 0) length = UnassignedLength(src);
    src.at += length;
    if (character != kNoCharacter) return {1, character};
    return {length, (length == 1 ? kRawByte : kFirstByte) + byte};
}

constexpr std::size_t kLongestGroup = 4;

// Reads the carried bytes at `units` that belong together. Returns their number, or 0 if the first
// unit is no carried byte or its byte is a character of its own: text from a caller must not
// smuggle in a backslash. Bytes that are marked as one character must form one.
unsigned ReadCarried(const CodePage& page, const unsigned char* units, const unsigned char* end,
                     unsigned char (&bytes)[kLongestGroup]) {
    const unsigned first = LoadUnit(units);
    if (!IsCarriedByte(first)) return 0;
    const unsigned later = first < kFirstByte ? kRawByte : kLaterByte;
    unsigned n = 0;
    do bytes[n] = static_cast<unsigned char>(LoadUnit(units + 2 * n));
    while (++n < kLongestGroup && units + 2 * n < end &&
           (LoadUnit(units + 2 * n) & 0xFF00) == later);
    // In a code set with escapes, the grouping of bytes depends on the preceding text.
    if (page.base) return later == kRawByte && bytes[0] >= 0x20 && bytes[0] < 0x80 ? 0 : 1;
    Source src{bytes, bytes + n};
    const Group group = ReadGroup(page, src);
    if (!IsCarriedByte(group.unit)) return 0;
    return later == kRawByte || group.length == n ? group.length : 0;
}

std::ptrdiff_t SizeAt(const unsigned char* units, const unsigned char* end) {
    const bool pair =
        IsHighSurrogate(LoadUnit(units)) && end - units >= 4 && IsLowSurrogate(LoadUnit(units + 2));
    return pair ? 4 : 2;
}

enum class Unknown { kRefuse, kReplace };

// Encodes units into dst. Writes the bytes of carried units, and handles other units that do not
// convert as `unknown` specifies.
Stop EncodeText(const CodePage& page, const unsigned char*& units, const unsigned char* end,
                Sink& dst, Unknown unknown) {
    static const unsigned short question = '?';
    for (;;) {
        const Stop stop = Encode(page, units, end, dst);
        if (stop != Stop::kBad) return stop;
        unsigned char bytes[kLongestGroup];
        if (const unsigned n = ReadCarried(page, units, end, bytes)) {
            CloseText(page, dst);
            if (static_cast<std::size_t>(dst.end - dst.at) < n) return Stop::kFull;
            for (unsigned i = 0; i < n; ++i) *dst.at++ = bytes[i];
            units += 2 * n;
        } else if (unknown == Unknown::kRefuse) {
            return Stop::kBad;
        } else {
            const unsigned char* at = Bytes(&question);
            if (Encode(page, at, at + 2, dst) != Stop::kDone) return Stop::kFull;
            units += SizeAt(units, end);
        }
    }
}

// Starts a text. Carried text already contains its announcement, or has none, so none is added in a
// code set with escapes.
Sink BeginText(const CodePage& page, unsigned char* begin, unsigned char* end,
               const unsigned char* units, const unsigned char* unitsEnd) {
    Sink dst{begin, end};
    if (page.base)
        for (const unsigned char* u = units; u < unitsEnd && !dst.state.begun; u += 2)
            dst.state.begun = IsCarriedByte(LoadUnit(u));
    return dst;
}

long Narrow(const CodePage* page, char* out, std::size_t limit, const unsigned short* text,
            const unsigned char* end, Unknown unknown) {
    if (!page) return -1;
    const auto start = reinterpret_cast<unsigned char*>(out);
    const unsigned char* units = Bytes(text);
    Sink dst = BeginText(*page, start, start + limit, units, end);
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
    const auto begin = reinterpret_cast<const unsigned char*>(text);
    for (Source src{begin, begin + bytes}; src.at < src.end;) {
        const unsigned char* p = src.at;
        if (!page) {
            *out++ = static_cast<unsigned short>(*p < 0x80 ? *p : kRawByte + *p);
            ++src.at;
            continue;
        }
        *out++ = static_cast<unsigned short>(ReadGroup(*page, src).unit);
        while (++p < src.at) *out++ = static_cast<unsigned short>(kLaterByte + *p);
    }
}

bool CarriesCharacters() {
    const CodePage* page = CurrentCodePage();
    return !page || page->form != CodeForm::kIso2022Jp;
}

std::int64_t NarrowLength(const unsigned short* text, std::size_t count) {
    const CodePage* page = CurrentCodePage();
    if (!page) return -1;
    const unsigned char* units = Bytes(text);
    const unsigned char* const end = Bytes(text + count);
    unsigned char chunk[512];
    Sink dst = BeginText(*page, chunk, chunk + sizeof chunk, units, end);
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

std::size_t ReplaceUnconvertible(unsigned short* text, std::size_t count) {
    const CodePage* page = CurrentCodePage();
    const unsigned char* units = Bytes(text);
    const unsigned char* const end = Bytes(text + count);
    unsigned short* out = text;
    unsigned char chunk[512];
    Sink dst{chunk, chunk + sizeof chunk};
    while (page && units < end) {
        const unsigned char* const begin = units;
        dst.at = chunk;
        const Stop stop = Encode(*page, units, end, dst);
        const auto converted = static_cast<std::size_t>(units - begin);
        std::memmove(out, begin, converted);
        out += converted / 2;
        if (stop != Stop::kBad) continue;
        *out++ = '?';
        units += SizeAt(units, end);
    }
    return static_cast<std::size_t>(out - text);
}

bool HasSurrogates(const unsigned short* text, std::size_t count) {
    unsigned found = 0;
    for (std::size_t i = 0; i < count; ++i) found |= IsSurrogate(text[i]);
    return found != 0;
}

bool HasCode(unsigned short character) {
    const CodePage* page = CurrentCodePage();
    if (!page) return false;
    if (page->back) return character == 0 || page->Back(character) != 0;
    unsigned char bytes[16];
    Sink dst{bytes, bytes + sizeof bytes};
    const unsigned char* units = Bytes(&character);
    return Encode(*page, units, units + 2, dst) == Stop::kDone;
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

int ToWidePair(unsigned short (&out)[2], unsigned* units, const char* text, std::size_t bytes) {
    const CodePage* page = CurrentCodePage();
    if (!page) return -1;
    if (bytes == 0 || *text == 0) return 0;
    const std::size_t longest = bytes < 16 ? bytes : 16;  // escape sequences and a character
    Source src = SourceOf(text, longest);
    // With the escapes after it the character would seem longer, so the text is extended byte by
    // byte.
    const unsigned char* const textEnd = src.end;
    for (src.end = src.at + 1; src.end <= textEnd; ++src.end) {
        Source attempt = src;
        attempt.open = src.end < textEnd;  // an escape byte may begin an escape sequence
        unsigned char* end = Bytes(out);
        if (Decode(*page, attempt, end, Bytes(out + 2)) == Stop::kBad) continue;
        if (end == Bytes(out + 2) && !IsHighSurrogate(out[0])) {  // two characters at once
            attempt = src;
            end = Bytes(out);
            Decode(*page, attempt, end, Bytes(out + 1));
        }
        *units = static_cast<unsigned>(end - Bytes(out)) / 2;
        if (*units != 0) return static_cast<int>(attempt.at - src.at);
    }
    return -1;
}

int ToWideCharacter(unsigned short* out, const char* text, std::size_t bytes) {
    unsigned short characters[2];
    unsigned units;
    const int taken = ToWidePair(characters, &units, text, bytes);
    if (taken <= 0) return taken;
    if (units != 1) return -1;
    *out = characters[0];
    return taken;
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
