#include "genutil/string/wide_view.h"

#include <cstring>

#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"

namespace genutil {

namespace {

using Wide = unsigned short;

// The maximum length of a text that is converted into a buffer on the stack and then copied to one
// of exact size.
constexpr std::size_t kShort = 128;
constexpr std::size_t kLongestCode = 4;

// A longer text is measured before it is converted, because a buffer for the longest possible
// result would be too large.
constexpr std::uint64_t kMeasured = std::uint64_t{64} << 20;

std::uint32_t Decode(Wide* out, std::size_t limit, const char* text, std::size_t bytes,
                     WideForm form) {
    const long length = ToWide(out, limit, text, bytes);
    const auto count = static_cast<std::uint32_t>(length);
    // If there are as many characters as bytes, they are the same in both forms.
    if (length >= 0 && (form == WideForm::kCharacters || (count == bytes && CarriesCharacters())))
        return count;
    if (form == WideForm::kBytes) bytes = strnlen(text, bytes);
    ToWideBytewise(out, text, bytes);
    return static_cast<std::uint32_t>(bytes);
}

Wide* MeasuredWideText(const char* text, std::size_t bytes, std::uint32_t* length, WideForm form) {
    if (form == WideForm::kBytes) bytes = strnlen(text, bytes);
    const std::int64_t characters = form == WideForm::kBytes ? -1 : WideLength(text, bytes);
    *length =
        characters < 0 ? static_cast<std::uint32_t>(bytes) : static_cast<std::uint32_t>(characters);
    Wide* wide = NewText<Wide>(*length);
    if (!wide) return nullptr;
    Decode(wide, *length, text, bytes, form);
    wide[*length] = 0;
    return wide;
}

// The three functions below also return null, with the length kUnknown, if a character does not
// convert.
constexpr std::uint32_t kUnknown = 0xFFFFFFFF;

char* ShortNarrowText(const Wide* wide, std::size_t count, std::uint32_t* length) {
    char bytes[kShort * kLongestCode];
    const long n = ToNarrow(bytes, sizeof bytes, wide, count);
    *length = n < 0 ? kUnknown : static_cast<std::uint32_t>(n);
    if (n < 0) return nullptr;
    char* text = NewText<char>(*length);
    if (!text) return nullptr;
    CopyUnits(text, static_cast<const char*>(bytes), *length);
    text[*length] = 0;
    return text;
}

char* MeasuredNarrowText(const Wide* wide, std::size_t count, std::uint32_t* length) {
    const std::int64_t n = NarrowLength(wide, count);
    *length = n < 0 ? kUnknown : static_cast<std::uint32_t>(n);
    if (n < 0) return nullptr;
    char* text = NewText<char>(static_cast<std::uint64_t>(n));
    if (!text) return nullptr;
    const auto size = static_cast<std::size_t>(n);
    *length = static_cast<std::uint32_t>(size);
    ToNarrow(text, size, wide, count);
    text[size] = 0;
    return text;
}

char* NarrowText(const Wide* wide, std::size_t count, std::uint32_t* length) {
    *length = 0;
    const std::size_t longest = LongestNarrow();
    const std::uint64_t room = std::uint64_t{count} * longest;
    if (longest == 0 || room > kMeasured) return MeasuredNarrowText(wide, count, length);
    if (count <= kShort) return ShortNarrowText(wide, count, length);
    char* text = NewText<char>(room);
    if (!text) return nullptr;
    const long n = ToNarrow(text, static_cast<std::size_t>(room), wide, count);
    if (n < 0) {
        Release(text);
        *length = kUnknown;
        return nullptr;
    }
    *length = static_cast<std::uint32_t>(n);
    return FitText(text, *length, room);
}

}  // namespace

std::size_t UnitsBeforeNul(const Wide* wide, std::uint64_t count) {
    std::size_t n = 0;
    while (n < count && wide[n]) ++n;
    return n;
}

Wide* NewWideText(const char* text, std::uint64_t size, std::uint32_t* length, WideForm form) {
    const auto bytes = static_cast<std::size_t>(size);
    if (bytes > kMeasured) return MeasuredWideText(text, bytes, length, form);
    if (bytes <= kShort) {
        Wide characters[kShort];
        *length = Decode(characters, kShort, text, bytes, form);
        Wide* wide = NewText<Wide>(*length);
        if (!wide) return nullptr;
        CopyUnits(wide, static_cast<const Wide*>(characters), *length);
        wide[*length] = 0;
        return wide;
    }
    Wide* wide = NewText<Wide>(bytes);
    if (!wide) return nullptr;
    *length = Decode(wide, bytes, text, bytes, form);
    return FitText(wide, *length, bytes);
}

char* NewNarrowText(Wide* wide, std::uint32_t* count, std::uint32_t* length) {
    const std::size_t before = UnitsBeforeNul(wide, *count);
    char* text = NarrowText(wide, before, length);
    *count = static_cast<std::uint32_t>(before);
    if (text || *length != kUnknown) return text;
    *count = static_cast<std::uint32_t>(ReplaceUnconvertible(wide, before));
    wide[*count] = 0;
    return NarrowText(wide, *count, length);
}

char* NewNarrowText(const Wide* wide, std::uint64_t count, std::uint32_t* length) {
    const std::size_t before = UnitsBeforeNul(wide, count);
    char* text = NarrowText(wide, before, length);
    if (text || *length != kUnknown) return text;
    const Owned<Wide> copy(NewText<Wide>(before));
    if (!copy.Get()) return nullptr;
    CopyUnits(copy.Get(), wide, before);
    return NarrowText(copy.Get(), ReplaceUnconvertible(copy.Get(), before), length);
}

char* NewLimitedText(const Wide* wide, std::uint64_t count, std::uint64_t limit,
                     std::uint32_t* length) {
    const std::size_t before = UnitsBeforeNul(wide, count);
    char* text = NarrowText(wide, before, length);
    if (text || *length != kUnknown) return text;
    text = NewText<char>(limit);
    if (!text) return nullptr;
    *length = static_cast<std::uint32_t>(
        ToNarrowLossy(text, static_cast<std::size_t>(limit), wide, before));
    return FitText(text, *length, limit);
}

char* NewCarriedText(const Wide* wide, std::uint64_t count, std::uint32_t* length) {
    char* text = NewText<char>(count);
    if (!text) return nullptr;
    const auto n = static_cast<std::size_t>(count);
    for (std::size_t i = 0; i < n; ++i) {
        char bytes[kLongestCode] = {};
        const bool isByte = wide[i] < 0x80 || IsCarriedByte(wide[i]);
        if (!isByte) ToNarrowCharacter(bytes, wide[i]);
        text[i] = isByte ? static_cast<char>(wide[i]) : bytes[0];
    }
    text[n] = 0;
    *length = static_cast<std::uint32_t>(n);
    return text;
}

WideView::WideView(const Wide* built, std::uint32_t builtLength, const char* text,
                   std::uint64_t bytes, WideForm form)
    : m_characters(built), m_length(builtLength), m_text(text), m_bytes(bytes) {
    if (built && form == WideForm::kCharacters) return;
    if (built && builtLength == bytes && CarriesCharacters()) {
        m_length = static_cast<std::uint32_t>(UnitsBeforeNul(built, builtLength));
        return;
    }
    if (bytes < kShort) {
        m_length = Decode(m_short, kShort - 1, text, static_cast<std::size_t>(bytes), form);
        m_short[m_length] = 0;
        m_characters = m_short;
        return;
    }
    m_made.Reset(NewWideText(text, bytes, &m_length, form));
    m_characters = m_made.Get();
}

bool WideView::IsBroken() const {
    return m_length == m_bytes && m_characters && HasSurrogates(m_characters, m_length);
}

FirstCharacter::FirstCharacter(const char* text, WideForm form) {
    if (!text) return;
    Wide character[2];
    unsigned units;
    const int bytes = ToWidePair(character, &units, text, std::strlen(text));
    if (bytes <= 0) return;
    m_bytes = static_cast<unsigned>(bytes);
    if (form == WideForm::kBytes && (m_bytes > 1 || !CarriesCharacters())) {
        m_length = m_bytes;
        ToWideBytewise(m_units, text, m_bytes);
        return;
    }
    m_length = units;
    CopyUnits(m_units, static_cast<const Wide*>(character), units);
}

int CharacterBytes(const Wide* text, std::uint32_t length, std::uint32_t at, char* out) {
    if (IsInside(text, at)) return 0;
    const std::uint32_t end = AlignUp(text, length, at + 1);
    if (IsCarriedByte(text[at])) {
        for (std::uint32_t i = at; i < end; ++i) out[i - at] = static_cast<char>(text[i]);
        return static_cast<int>(end - at);
    }
    const long bytes = end - at == 1 ? ToNarrowCharacter(out, text[at])
                                     : ToNarrow(out, kLongestCode, text + at, end - at);
    return bytes < 0 ? 0 : static_cast<int>(bytes);
}

}  // namespace genutil
