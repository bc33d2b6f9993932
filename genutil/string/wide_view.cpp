#include "genutil/string/wide_view.h"

#include <cstring>

#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"

namespace genutil {

namespace {

using Wide = unsigned short;

// Characters that may be converted into a buffer on the stack first, and then copied to one of
// their size.
constexpr std::size_t kShort = 128;
constexpr std::size_t kLongestCode = 4;

// Beyond this a text is measured before it is converted, since room for the longest text that could
// come out is more than one should ask for.
constexpr std::uint64_t kMeasured = std::uint64_t{64} << 20;

std::uint32_t Decode(Wide* out, std::size_t limit, const char* text, std::size_t bytes) {
    const long length = ToWide(out, limit, text, bytes);
    if (length >= 0) return static_cast<std::uint32_t>(length);
    ToWideBytewise(out, text, bytes);
    return static_cast<std::uint32_t>(bytes);
}

Wide* MeasuredWideText(const char* text, std::size_t bytes, std::uint32_t* length) {
    const std::int64_t characters = WideLength(text, bytes);
    *length =
        characters < 0 ? static_cast<std::uint32_t>(bytes) : static_cast<std::uint32_t>(characters);
    Wide* wide = NewText<Wide>(*length);
    if (!wide) return nullptr;
    Decode(wide, *length, text, bytes);
    wide[*length] = 0;
    return wide;
}

char* LossyText(const Wide* wide, std::size_t count, std::uint64_t limit, std::uint32_t* length) {
    char* text = NewText<char>(limit);
    if (!text) return nullptr;
    *length = static_cast<std::uint32_t>(
        ToNarrowLossy(text, static_cast<std::size_t>(limit), wide, count));
    return FitText(text, *length, limit);
}

char* ShortNarrowText(const Wide* wide, std::size_t count, std::uint64_t lossyLimit,
                      std::uint32_t* length) {
    char bytes[kShort * kLongestCode];
    long n = ToNarrow(bytes, sizeof bytes, wide, count);
    if (n < 0) n = ToNarrowLossy(bytes, static_cast<std::size_t>(lossyLimit), wide, count);
    *length = static_cast<std::uint32_t>(n);
    char* text = NewText<char>(*length);
    if (!text) return nullptr;
    CopyUnits(text, static_cast<const char*>(bytes), *length);
    text[*length] = 0;
    return text;
}

char* MeasuredNarrowText(const Wide* wide, std::size_t count, std::uint64_t lossyLimit,
                         std::uint32_t* length) {
    const std::int64_t n = NarrowLength(wide, count);
    if (n < 0) return LossyText(wide, count, lossyLimit, length);
    char* text = NewText<char>(static_cast<std::uint64_t>(n));
    if (!text) return nullptr;
    const auto size = static_cast<std::size_t>(n);
    *length = static_cast<std::uint32_t>(size);
    ToNarrow(text, size, wide, count);
    text[size] = 0;
    return text;
}

}  // namespace

bool FirstCharacter(const char* text, Wide* character) {
    return text && ToWideCharacter(character, text, std::strlen(text)) > 0;
}

std::size_t UnitsBeforeNul(const Wide* wide, std::uint64_t count) {
    std::size_t n = 0;
    while (n < count && wide[n]) ++n;
    return n;
}

Wide* NewWideText(const char* text, std::uint64_t size, std::uint32_t* length) {
    const auto bytes = static_cast<std::size_t>(size);
    if (bytes > kMeasured) return MeasuredWideText(text, bytes, length);
    if (bytes <= kShort) {
        Wide characters[kShort];
        *length = Decode(characters, kShort, text, bytes);
        Wide* wide = NewText<Wide>(*length);
        if (!wide) return nullptr;
        CopyUnits(wide, static_cast<const Wide*>(characters), *length);
        wide[*length] = 0;
        return wide;
    }
    Wide* wide = NewText<Wide>(bytes);
    if (!wide) return nullptr;
    *length = Decode(wide, bytes, text, bytes);
    return FitText(wide, *length, bytes);
}

char* NewNarrowText(const Wide* wide, std::uint64_t characters, std::uint64_t lossyLimit,
                    std::uint32_t* length) {
    const std::size_t count = UnitsBeforeNul(wide, characters);
    const std::size_t longest = LongestNarrow();
    const std::uint64_t room = std::uint64_t{count} * longest;
    if (longest == 0 || room > kMeasured)
        return MeasuredNarrowText(wide, count, lossyLimit, length);
    if (count <= kShort && lossyLimit <= kShort * kLongestCode)
        return ShortNarrowText(wide, count, lossyLimit, length);
    char* text = NewText<char>(room);
    if (!text) return nullptr;
    const long n = ToNarrow(text, static_cast<std::size_t>(room), wide, count);
    if (n < 0) {
        Release(text);
        return LossyText(wide, count, lossyLimit, length);
    }
    *length = static_cast<std::uint32_t>(n);
    return FitText(text, *length, room);
}

WideView::WideView(const Wide* built, std::uint32_t builtLength, const char* text,
                   std::uint64_t bytes)
    : m_characters(built), m_length(builtLength) {
    if (built) return;
    if (bytes < kShort) {
        m_length = Decode(m_short, kShort - 1, text, static_cast<std::size_t>(bytes));
        m_short[m_length] = 0;
        m_characters = m_short;
        return;
    }
    m_made.Reset(NewWideText(text, bytes, &m_length));
    m_characters = m_made.Get();
}

}  // namespace genutil
