// CGNString's 16-bit copy: how it is kept in step with the bytes, and access to characters.
#include <algorithm>
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "genutil/string/wide_view.h"
#include "osutil/platform/locale/locales.h"

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

bool StringStorage::IsBroken(const CGNString& s) {
    return MayBeBroken(s) && HasSurrogates(s.m_wide, s.m_wideLength);
}

bool StringStorage::IsSameAscii(const CGNString& s) {
    if (!MayBeBroken(s)) return false;
    unsigned different = 0;
    for (std::uint32_t i = 0; i < s.m_length; ++i) {
        const auto byte = static_cast<unsigned char>(s.m_data[i]);
        different |= static_cast<unsigned>(byte ^ s.m_wide[i]) | (byte & 0x80u);
    }
    return different == 0;
}

bool StringStorage::RebuildData(CGNString& s) {
    if (!s.m_wide) return false;
    std::uint32_t length;
    char* text = NewNarrowText(s.m_wide, &s.m_wideLength, &length);
    if (!text) {
        DropWide(s);
        return false;
    }
    InstallData(s, text, length, length);
    return true;
}

bool StringStorage::Rebuild(CGNString& s) {
    if (!IsBroken(s)) return RebuildData(s);
    Fit(s);
    return true;
}

void StringStorage::RebuildLimited(const CGNString& s, unsigned bytesPerCharacter) {
    if (!s.m_wide) return;
    std::uint32_t length;
    const std::uint64_t limit = std::uint64_t{s.m_wideLength} * bytesPerCharacter;
    if (char* text = NewLimitedText(s.m_wide, s.m_wideLength, limit, &length))
        InstallData(s, text, length, length);
    else
        DropWide(s);
}

void StringStorage::StoreEdited(CGNString& s, const unsigned short* wide, std::uint64_t count) {
    std::uint32_t length;
    char* const text = IsBroken(s) ? NewCarriedText(wide, UnitsBeforeNul(wide, count), &length)
                                   : NewNarrowText(wide, count, &length);
    if (text) Adopt(s, text, length, length, Placing::kStored);
}

char* StringStorage::NewPart(const CGNString& s, std::uint32_t begin, std::uint32_t end,
                             std::uint32_t* length) {
    // Only the part is searched for carried bytes: a search of the whole text would make loops over
    // parts quadratic.
    if (!MayBeBroken(s) || !HasSurrogates(s.m_wide + begin, end - begin))
        return NewNarrowText(s.m_wide + begin, end - begin, length);
    const char* const bytes = s.m_data + begin;
    *length = static_cast<std::uint32_t>(strnlen(bytes, end - begin));
    char* text = NewText<char>(*length);
    if (!text) return nullptr;
    CopyUnits(text, bytes, *length);
    text[*length] = 0;
    return text;
}

namespace {

// Builds the text from its bytes if a part of it is invalid in the code set.
bool EditBytes(CGNString& s, const char* left, std::uint32_t leftLength, const WideView& added,
               const char* right, std::uint32_t rightLength) {
    const std::size_t n = strnlen(added.Text(), static_cast<std::size_t>(added.Bytes()));
    const std::uint64_t length = std::uint64_t{leftLength} + n + rightLength;
    char* text = NewText<char>(length);
    if (!text) return false;
    CopyUnits(text, left, leftLength);
    CopyUnits(text + leftLength, added.Text(), n);
    CopyUnits(text + leftLength + n, right, rightLength);
    StringStorage::Adopt(s, text, length, length, Placing::kRebuilt);
    return true;
}

}  // namespace

bool StringStorage::Edit(CGNString& s, std::uint32_t begin, std::uint32_t end,
                         const WideView& added) {
    if (!added.Characters()) return false;
    if (IsBroken(s) || added.IsBroken()) {
        std::uint32_t leftLength = 0, rightLength = 0;
        const Owned<char> left(NewPart(s, 0, begin, &leftLength));
        const Owned<char> right(NewPart(s, end, s.m_wideLength, &rightLength));
        return left.Get() && right.Get() &&
               EditBytes(s, left.Get(), leftLength, added, right.Get(), rightLength);
    }
    // The string may be inserted into itself. Its text is then intact until it is copied, because
    // the tail moves beyond its end and the old buffer is kept until the end of this function.
    const std::uint32_t tail = s.m_wideLength - end;
    const std::uint64_t sum = std::uint64_t{begin} + added.Length() + tail;
    Owned<Wide> old;
    if (s.m_wideCapacity < sum && !GrowWide(s, sum, old)) return false;
    Wide* const place = s.m_wide + begin;
    CopyUnits(place + added.Length(), static_cast<const Wide*>(s.m_wide + end), tail);
    CopyUnits(place, added.Characters(), added.Length());
    s.m_wideLength = static_cast<std::uint32_t>(sum);
    s.m_wide[sum] = 0;
    return RebuildData(s);
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

// Programs depend on both limits, and on the smaller one for strings that they edit.
void CGNString::DuplicateDataFromWzBuffer() const {
    Storage::RebuildLimited(*this, 3);
}
void CGNString::DuplicateDataFromWzBuffer() {
    Storage::RebuildLimited(*this, 2);
}

// -- Text from 16-bit characters -----------------------------------------------------------------

namespace {

// Replaces the carried bytes in a text from the caller, in which surrogates may only form pairs.
std::size_t WithoutCarriedBytes(Wide* text, std::size_t count) {
    return genutil::HasSurrogates(text, count) ? genutil::ReplaceUnconvertible(text, count) : count;
}

}  // namespace

void CGNString::SetWide(const unsigned short* w) {
    if (!w) return;
    const std::uint64_t n = UnitsBeforeNul(w);
    m_wide = NewText<Wide>(n);
    if (!m_wide) return;
    CopyUnits(m_wide, w, n + 1);
    m_wideCapacity = static_cast<std::uint32_t>(n);
    m_wideLength = static_cast<std::uint32_t>(WithoutCarriedBytes(m_wide, n));
    m_wide[m_wideLength] = 0;
    Storage::RebuildData(*this);
}

CGNString& CGNString::AppendWide(const unsigned short* w) {
    return w ? *this += CGNString(w) : *this;
}

// If the limit is inside a character, the text ends before that character.
CGNString& CGNString::CopyNChars(const char* s, unsigned int n) {
    if (!s) return Empty();
    CGNString taken;
    taken.m_flags = m_flags;
    Owned<Wide> old;
    const std::size_t bytes = std::strlen(s);
    n = genutil::LimitOf(n, bytes);
    if (!Storage::GrowWide(taken, std::uint64_t{n} * 3, old)) return *this;
    const long count = genutil::ToWide(taken.m_wide, n, s, bytes);
    if (count < 0) {
        // A few more bytes are read to find out whether the last character continues after the
        // limit.
        const std::size_t most = std::min<std::size_t>(bytes, n);
        const genutil::WideView view(s, std::min<std::size_t>(bytes, std::uint64_t{n} + 4),
                                     genutil::WideForm::kBytes);
        if (!view.Characters()) return *this;
        const std::uint32_t length =
            genutil::AlignDown(view.Characters(), view.Length(), static_cast<std::uint32_t>(most));
        char* text = NewText<char>(length);
        if (!text) return *this;
        CopyUnits(text, s, length);
        text[length] = 0;
        Storage::Adopt(*this, text, length, length, genutil::Placing::kRebuilt);
        return *this;
    }
    taken.m_wideLength = static_cast<std::uint32_t>(count);
    taken.m_wide[count] = 0;
    if (Storage::RebuildData(taken)) Storage::Swap(*this, taken);
    return *this;
}

CGNString& CGNString::CopyNWide(const unsigned short* w, unsigned int n) {
    if (!w) return Empty();
    CGNString taken;
    taken.m_flags = m_flags;
    Owned<Wide> old;
    std::size_t given = UnitsBeforeNul(w, n);
    n = genutil::LimitOf(n, given);
    if (!Storage::GrowWide(taken, n, old)) return *this;
    const bool isCut = given == n && n > 0 && w[n - 1] >= 0xD800 && w[n - 1] < 0xDC00;
    if (isCut) --given;
    CopyUnits(taken.m_wide, w, given);
    taken.m_wideLength = static_cast<std::uint32_t>(WithoutCarriedBytes(taken.m_wide, given));
    taken.m_wide[taken.m_wideLength] = 0;
    if (Storage::RebuildData(taken)) Storage::Swap(*this, taken);
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
    const auto at = static_cast<unsigned>(index);
    if (!Storage::EnsureWide(*this) || index < 0 || at >= m_wideLength) return out;
    const int bytes = genutil::IsSurrogate(m_wide[at])
                          ? genutil::CharacterBytes(m_wide, m_wideLength, at, out)
                          : genutil::ToNarrowCharacter(out, m_wide[at]);
    out[bytes < 0 ? 0 : bytes] = 0;
    return out;
}

char CGNString::GetAt(unsigned int index) const {
    char character[8];
    return GetCodePageCharAt(static_cast<int>(index), character)[0];
}

unsigned char CGNString::SetCodePageCharAt(int index, const char* mbchar) {
    if (!Storage::EnsureWide(*this)) return 0;
    const genutil::FirstCharacter character(mbchar, genutil::WideForm::kCharacters);
    const auto at = static_cast<unsigned>(index);
    if (character.Length() == 0 || index < 0 || at >= m_wideLength ||
        genutil::IsInside(m_wide, at)) {
        Storage::Rebuild(*this);
        return 0;
    }
    const genutil::WideView added(mbchar, character.Bytes());
    return Storage::Edit(*this, at, genutil::AlignUp(m_wide, m_wideLength, at + 1), added);
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
    const unsigned int n = std::min({count, m_wideLength, theirs.Length()});
    for (unsigned int i = 0; i < n; ++i) {
        const Wide a = m_wide[i], b = theirs.Characters()[i];
        if (a != b && genutil::ToUpperWide(a) != genutil::ToUpperWide(b)) return 0;
    }
    return 1;
}

int CGNString::Collate(const CGNString& other) const {
    if (!genutil::platform::HasCollation()) return std::strcmp(m_data, other.m_data);
    const genutil::WideView theirs(other.m_wide, other.m_wideLength, other.m_data, other.m_length);
    if (!Storage::EnsureWide(*this) || !theirs.Characters())
        return std::strcmp(m_data, other.m_data);
    return genutil::CollateWide(m_wide, theirs.Characters());
}
