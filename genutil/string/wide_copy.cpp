// CGNString's 16-bit copy: how it is kept in step with the bytes, and access to characters.
#include <algorithm>
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "genutil/string/wide_view.h"

using genutil::CopyUnits;
using genutil::NewText;
using genutil::Owned;
using genutil::UnitsBeforeNul;
using Storage = genutil::StringStorage;
using Wide = unsigned short;

// -- The two buffers -----------------------------------------------------------------------------

namespace genutil {

bool StringStorage::EnsureWide(const CGNString& s) {
    if (!s.m_wide) s.DuplicateWzBufferFromData();
    return s.m_wide != nullptr;
}

bool StringStorage::RebuildData(const CGNString& s, unsigned bytesPerCharacter) {
    if (!s.m_wide) return false;
    std::uint32_t length;
    const std::uint64_t lossyLimit = std::uint64_t{s.m_wideLength} * bytesPerCharacter;
    char* text = NewNarrowText(s.m_wide, s.m_wideLength, lossyLimit, &length);
    if (!text) {
        DropWide(s);
        return false;
    }
    if (OwnsData(s)) Release(s.m_data);
    s.m_data = text;
    s.m_length = s.m_capacity = length;
    return true;
}

void StringStorage::StoreWide(CGNString& s, const unsigned short* wide, std::uint64_t count) {
    std::uint32_t length;
    char* text = NewNarrowText(wide, count, count * 2, &length);
    if (text) Adopt(s, text, length, length);
}

}  // namespace genutil

unsigned int CGNString::ReallocateToNumChars(unsigned int n) {
    Owned<Wide> old;
    Storage::GrowWide(*this, n, old);
    return m_wideCapacity;
}

void CGNString::ExpandBufferToWzBuffer(unsigned short* w) {
    Owned<Wide> old;
    const std::uint64_t n = UnitsBeforeNul(w);
    if (!Storage::GrowWide(*this, n, old)) return;
    CopyUnits(m_wide, static_cast<const Wide*>(w), n);
    m_wideLength = static_cast<std::uint32_t>(n);
    m_wide[n] = 0;
}

void CGNString::DuplicateWzBufferFromData() const {
    Storage::DropWide(*this);
    std::uint32_t length;
    m_wide = genutil::NewWideText(m_data, m_length, &length);
    if (m_wide) m_wideLength = m_wideCapacity = length;
}

void CGNString::DuplicateWzBufferFromData() {
    static_cast<const CGNString*>(this)->DuplicateWzBufferFromData();
}

// Programs depend on both limits, on the narrower one for what they edit.
void CGNString::DuplicateDataFromWzBuffer() const {
    Storage::RebuildData(*this, 3);
}
void CGNString::DuplicateDataFromWzBuffer() {
    Storage::RebuildData(*this, 2);
}

// -- Text from 16-bit characters -----------------------------------------------------------------

void CGNString::SetWide(const unsigned short* w) {
    if (!w) return;
    const std::uint64_t n = UnitsBeforeNul(w);
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
    Owned<Wide> old;
    if (!Storage::GrowWide(taken, std::uint64_t{n} * 3, old)) return *this;
    std::fill_n(taken.m_wide, std::uint64_t{n} + 1, Wide{0});
    const std::size_t bytes = std::strlen(s);
    if (genutil::ToWide(taken.m_wide, n, s, bytes) < 0)
        genutil::ToWideBytewise(taken.m_wide, s, std::min<std::size_t>(bytes, n));
    taken.m_wideLength = n;
    if (Storage::RebuildData(taken, 2)) Storage::Swap(*this, taken);
    return *this;
}

CGNString& CGNString::CopyNWide(const unsigned short* w, unsigned int n) {
    if (!w) return Empty();
    CGNString taken;
    taken.m_flags = m_flags;
    Owned<Wide> old;
    if (!Storage::GrowWide(taken, n, old)) return *this;
    const std::uint64_t given = UnitsBeforeNul(w, n);
    CopyUnits(taken.m_wide, w, given);
    std::fill_n(taken.m_wide + given, n - given + 1, Wide{0});
    taken.m_wideLength = n;
    if (Storage::RebuildData(taken, 2)) Storage::Swap(*this, taken);
    return *this;
}

CGNString& CGNString::AppendNChars(const char* s, unsigned int n) {
    CGNString taken;
    taken.CopyNChars(s, n);
    return *this += taken;
}

// -- Characters ----------------------------------------------------------------------------------

unsigned int CGNString::GetNumChars() const {
    const std::int64_t characters = genutil::WideLength(m_data, m_length);
    return characters < 0 ? m_length : static_cast<unsigned int>(characters);
}

unsigned int CGNString::GetLengthInChars() const {
    return GetNumChars();
}

char* CGNString::GetCodePageCharAt(int index, char* out) const {
    out[0] = 0;
    if (!Storage::EnsureWide(*this) || index < 0 || static_cast<unsigned>(index) >= m_wideLength)
        return out;
    const int bytes = genutil::ToNarrowCharacter(out, m_wide[index]);
    out[bytes < 0 ? 0 : bytes] = 0;
    return out;
}

char CGNString::GetAt(unsigned int index) const {
    char character[8];
    return GetCodePageCharAt(static_cast<int>(index), character)[0];
}

unsigned char CGNString::SetCodePageCharAt(int index, const char* mbchar) {
    if (!Storage::EnsureWide(*this)) return 0;
    Wide character = 0;
    const bool given = genutil::FirstCharacter(mbchar, &character);
    const bool stored = given && index >= 0 && static_cast<unsigned>(index) < m_wideLength;
    if (stored) m_wide[index] = character;
    return Storage::RebuildData(*this, 2) && stored;
}

unsigned char CGNString::SetAt(unsigned int index, char c) {
    const char text[2] = {c, 0};
    return SetCodePageCharAt(static_cast<int>(index), text);
}

// -- Comparison by characters --------------------------------------------------------------------

unsigned char CGNString::IsEqualNoCase(const CGNString& other) const {
    const unsigned int count = GetNumChars();
    if (count != other.GetNumChars()) return 0;
    const genutil::WideView theirs(other.m_wide, other.m_wideLength, other.m_data, other.m_length);
    if (!Storage::EnsureWide(*this) || !theirs.Characters()) return *this == other;
    // Characters that became '?' may be more of them in 16 bits than in bytes.
    const unsigned int n = std::min({count, m_wideLength, theirs.Length()});
    for (unsigned int i = 0; i < n; ++i) {
        const Wide a = m_wide[i], b = theirs.Characters()[i];
        if (a != b && genutil::ToUpperWide(a) != genutil::ToUpperWide(b)) return 0;
    }
    return 1;
}

int CGNString::Collate(const CGNString& other) const {
    const genutil::WideView theirs(other.m_wide, other.m_wideLength, other.m_data, other.m_length);
    if (!Storage::EnsureWide(*this) || !theirs.Characters())
        return std::strcmp(m_data, other.m_data);
    return genutil::CollateWide(m_wide, theirs.Characters());
}
