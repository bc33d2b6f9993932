// CGNString's 16-bit copy: how it is kept in step with the bytes, and access to characters.
#include <algorithm>
#include <cstring>

#include "genstr.h"
#include "genutil/mbutil/wide.h"
#include "genutil/string_storage.h"

using genutil::CopyUnits;
using genutil::Grow;
using genutil::NewText;
using genutil::Owned;

namespace {

using Wide = unsigned short;

std::uint64_t Length(const Wide* w) {
    const Wide* end = w;
    while (*end) ++end;
    return static_cast<std::uint64_t>(end - w);
}

bool IsHighSurrogate(Wide character) {
    return (character & 0xFC00) == 0xD800;
}

// The characters of a text, or its bytes one by one where it is invalid in the code set.
Wide* NewWideText(const char* text, std::uint32_t bytes, std::uint32_t* length) {
    const long characters = genutil::WideLength(text, bytes);
    *length = characters < 0 ? bytes : static_cast<std::uint32_t>(characters);
    Wide* wide = NewText<Wide>(*length);
    if (!wide) return nullptr;
    if (characters < 0)
        genutil::ToWideBytewise(wide, text, bytes);
    else
        genutil::ToWide(wide, *length, text, bytes);
    wide[*length] = 0;
    return wide;
}

// The bytes of 16-bit text and their number. What does not convert becomes '?', and the whole is
// then cut behind the last character that fits in `lossyLimit` bytes. Null without memory.
char* NewNarrowText(const Wide* wide, std::uint64_t lossyLimit, std::uint32_t* length) {
    long bytes = genutil::NarrowLength(wide);
    Owned<char> scratch;
    if (bytes < 0) {
        scratch.Reset(NewText<char>(lossyLimit));
        if (!scratch.Get()) return nullptr;
        const auto limit = static_cast<std::size_t>(lossyLimit);
        bytes = genutil::ToNarrowLossy(scratch.Get(), limit, wide);
    }
    const auto size = static_cast<std::size_t>(bytes);
    char* text = NewText<char>(size);
    if (!text) return nullptr;
    if (scratch.Get())
        CopyUnits(text, static_cast<const char*>(scratch.Get()), size);
    else
        genutil::ToNarrow(text, size, wide);
    text[size] = 0;
    *length = static_cast<std::uint32_t>(size);
    return text;
}

// Another string's characters, from its 16-bit copy if it has one. The other string is not changed:
// it may be in use elsewhere.
struct WideView {
    WideView(const Wide* built, std::uint32_t builtLength, const char* text, std::uint32_t bytes)
        : characters(built), length(builtLength), made(nullptr) {
        if (characters) return;
        made.Reset(NewWideText(text, bytes, &length));
        characters = made.Get();
    }
    const Wide* characters;
    std::uint32_t length;
    Owned<Wide> made;
};

}  // namespace

// -- The two buffers -----------------------------------------------------------------------------

void CGNString::DropWide() const {
    if (!m_wide) return;
    genutil::Release(m_wide);
    m_wide = nullptr;
    m_wideLength = 0;
    m_wideCapacity = 0;
}

void CGNString::FreeWzBuffer() {
    DropWide();
}

unsigned int CGNString::ReallocateToNumChars(unsigned int n) {
    GrowWide(n);
    return m_wideCapacity;
}

bool CGNString::GrowWide(std::uint64_t n) {
    Owned<Wide> old;
    const bool doubling = m_flags & genutil::kGrowByDoubling;
    return Grow(m_wide, m_wideLength, m_wideCapacity, m_wide != nullptr, doubling, n, old);
}

void CGNString::ExpandBufferToWzBuffer(unsigned short* w) {
    Owned<Wide> old;
    const std::uint64_t n = Length(w);
    const bool doubling = m_flags & genutil::kGrowByDoubling;
    if (!Grow(m_wide, m_wideLength, m_wideCapacity, m_wide != nullptr, doubling, n, old)) return;
    CopyUnits(m_wide, static_cast<const Wide*>(w), n);
    m_wideLength = static_cast<std::uint32_t>(n);
    m_wide[n] = 0;
}

void CGNString::DuplicateWzBufferFromData() const {
    DropWide();
    std::uint32_t length;
    m_wide = NewWideText(m_data, m_length, &length);
    if (m_wide) m_wideLength = m_wideCapacity = length;
}

void CGNString::DuplicateWzBufferFromData() {
    static_cast<const CGNString*>(this)->DuplicateWzBufferFromData();
}

bool CGNString::EnsureWide() const {
    if (!m_wide) DuplicateWzBufferFromData();
    return m_wide != nullptr;
}

// Without memory the bytes win, since they are what the string is: the 16-bit copy, changed or new,
// is dropped. False then.
bool CGNString::RebuildData(unsigned bytesPerCharacter) const {
    if (!m_wide) return false;
    std::uint32_t length;
    char* text = NewNarrowText(m_wide, std::uint64_t{m_wideLength} * bytesPerCharacter, &length);
    if (!text) {
        DropWide();
        return false;
    }
    if (OwnsData()) genutil::Release(m_data);
    m_data = text;
    m_length = m_capacity = length;
    return true;
}

// Programs depend on both limits, on the narrower one for what they edit.
void CGNString::DuplicateDataFromWzBuffer() const {
    RebuildData(3);
}
void CGNString::DuplicateDataFromWzBuffer() {
    RebuildData(2);
}

// -- Text from 16-bit characters -----------------------------------------------------------------

void CGNString::SetWide(const unsigned short* w) {
    if (!w) return;
    const std::uint64_t n = Length(w);
    m_wide = NewText<Wide>(n);
    if (!m_wide) return;
    CopyUnits(m_wide, w, n + 1);
    m_wideLength = m_wideCapacity = static_cast<std::uint32_t>(n);
    DuplicateDataFromWzBuffer();
}

CGNString& CGNString::AppendWide(const unsigned short* w) {
    return w ? *this += CGNString(w) : *this;
}

CGNString& CGNString::CopyNChars(const char* s, unsigned int n) {
    if (!s) return Empty();
    CGNString taken;
    taken.m_flags = m_flags;
    if (!taken.GrowWide(std::uint64_t{n} * 3)) return *this;
    std::fill_n(taken.m_wide, std::uint64_t{n} + 1, Wide{0});
    const std::size_t bytes = std::strlen(s);
    if (genutil::ToWide(taken.m_wide, n, s, bytes) < 0)
        genutil::ToWideBytewise(taken.m_wide, s, std::min<std::size_t>(bytes, n));
    // Half of a character is none.
    if (n != 0 && IsHighSurrogate(taken.m_wide[n - 1])) taken.m_wide[n - 1] = 0;
    taken.m_wideLength = n;
    if (taken.RebuildData(2)) Swap(taken);
    return *this;
}

CGNString& CGNString::CopyNWide(const unsigned short* w, unsigned int n) {
    if (!w) return Empty();
    CGNString taken;
    taken.m_flags = m_flags;
    if (!taken.GrowWide(n)) return *this;
    std::uint64_t given = 0;
    while (given < n && w[given]) ++given;
    CopyUnits(taken.m_wide, w, given);
    std::fill_n(taken.m_wide + given, n - given + 1, Wide{0});
    taken.m_wideLength = n;
    if (taken.RebuildData(2)) Swap(taken);
    return *this;
}

// -- Characters ----------------------------------------------------------------------------------

unsigned int CGNString::GetNumChars() const {
    const long characters = genutil::WideLength(m_data, m_length);
    return characters < 0 ? m_length : static_cast<unsigned int>(characters);
}

unsigned int CGNString::GetLengthInChars() const {
    return GetNumChars();
}

char* CGNString::GetCodePageCharAt(int index, char* out) const {
    out[0] = 0;
    if (!EnsureWide() || index < 0 || static_cast<unsigned>(index) >= m_wideLength) return out;
    const int bytes = genutil::ToNarrowCharacter(out, m_wide[index]);
    out[bytes < 0 ? 0 : bytes] = 0;
    return out;
}

char CGNString::GetAt(unsigned int index) const {
    char character[8];
    return GetCodePageCharAt(static_cast<int>(index), character)[0];
}

unsigned char CGNString::SetCodePageCharAt(int index, const char* mbchar) {
    if (!EnsureWide()) return 0;
    Wide character = 0;
    const bool given =
        mbchar && genutil::ToWideCharacter(&character, mbchar, std::strlen(mbchar)) > 0;
    const bool stored = given && index >= 0 && static_cast<unsigned>(index) < m_wideLength;
    if (stored) m_wide[index] = character;
    return RebuildData(2) && stored;
}

unsigned char CGNString::SetAt(unsigned int index, char c) {
    const char text[2] = {c, 0};
    return SetCodePageCharAt(static_cast<int>(index), text);
}

// -- Comparison by characters --------------------------------------------------------------------

unsigned char CGNString::IsEqualNoCase(const CGNString& other) const {
    const unsigned int count = GetNumChars();
    if (count != other.GetNumChars()) return 0;
    const WideView theirs(other.m_wide, other.m_wideLength, other.m_data, other.m_length);
    if (!EnsureWide() || !theirs.characters) return *this == other;
    // Characters that became '?' may be more of them in 16 bits than in bytes.
    const unsigned int n = std::min({count, m_wideLength, theirs.length});
    for (unsigned int i = 0; i < n; ++i) {
        const Wide a = m_wide[i], b = theirs.characters[i];
        if (a != b && genutil::ToUpperWide(a) != genutil::ToUpperWide(b)) return 0;
    }
    return 1;
}

int CGNString::Collate(const CGNString& other) const {
    const WideView theirs(other.m_wide, other.m_wideLength, other.m_data, other.m_length);
    if (!EnsureWide() || !theirs.characters) return std::strcmp(m_data, other.m_data);
    return genutil::CollateWide(m_wide, theirs.characters);
}
