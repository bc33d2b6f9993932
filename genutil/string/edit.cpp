// CGNString's search, extraction and editing by characters, and extraction by bytes.
#include <algorithm>
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "genutil/string/unit_search.h"
#include "genutil/string/wide_view.h"
#include "mbutil.h"

using genutil::CopyUnits;
using genutil::kNotFound;
using genutil::NewText;
using genutil::Placing;
using genutil::WideForm;
using genutil::WideView;
using Storage = genutil::StringStorage;

namespace {

using Wide = unsigned short;

// A few characters, looked up by their low byte first.
class WideSet {
  public:
    WideSet(const Wide* characters, std::uint32_t count)
        : m_characters(characters), m_end(characters + count) {
        for (const Wide* c = characters; c < m_end; ++c) m_low[*c & 0xFF] = true;
    }
    bool Has(Wide c) const { return m_low[c & 0xFF] && std::find(m_characters, m_end, c) != m_end; }

  private:
    const Wide *const m_characters, *const m_end;
    bool m_low[256] = {};
};

}  // namespace

// -- Search --------------------------------------------------------------------------------------

// If there are as many characters as bytes, they are the same in both forms or represent bytes.
WideForm genutil::StringStorage::FormFor(const CGNString& s) {
    const bool bytes = MayBeBroken(s) && (CarriesCharacters() || IsBroken(s));
    return bytes ? WideForm::kBytes : WideForm::kCharacters;
}

int genutil::StringStorage::Find(const CGNString& s, const WideView& wanted, int start) {
    if (start < 0 || static_cast<unsigned>(start) >= s.m_wideLength || !wanted.Characters())
        return -1;
    const Wide* const needle = wanted.Characters();
    // A valid text contains no carried bytes, but the low surrogates of its pairs have the same
    // values.
    if (wanted.Length() > 0 && !MayBeBroken(s) && IsCarriedByte(needle[0])) return -1;
    const std::size_t at = FindUnits<Wide>(s.m_wide, s.m_wideLength, needle, wanted.Length(),
                                           static_cast<unsigned>(start));
    return at == kNotFound ? -1 : static_cast<int>(at);
}

int CGNString::Find(const CGNString& t, int start) const {
    if (!Storage::EnsureWide(*this)) return -1;
    const WideView wanted(t.m_wide, t.m_wideLength, t.m_data, t.m_length, Storage::FormFor(*this));
    return Storage::Find(*this, wanted, start);
}

int CGNString::Find(const char* t, int start) const {
    if (!t) t = "";
    if (!Storage::EnsureWide(*this)) return -1;
    const WideView wanted(t, std::strlen(t), Storage::FormFor(*this));
    return Storage::Find(*this, wanted, start);
}

int CGNString::StrChr(unsigned int start, char c) const {
    const char text[2] = {c, 0};
    return Find(text, static_cast<int>(start));
}

int CGNString::ReverseFind(const char* ch) const {
    if (!Storage::EnsureWide(*this)) return -1;
    const genutil::FirstCharacter wanted(ch, Storage::FormFor(*this));
    const std::uint32_t n = wanted.Length();
    if (n == 0 || n > m_wideLength) return -1;
    for (std::uint32_t i = m_wideLength - n + 1; i-- > 0;)
        if (m_wide[i] == wanted.Units()[0] && genutil::SameUnits(m_wide + i, wanted.Units(), n))
            return static_cast<int>(i);
    return -1;
}

namespace {

// Returns true if a character of `units` units is in a set, whose characters may also have several
// units. `decoded` is true if the character is part of a valid text, so that carried bytes in the
// set must be decoded for the comparison. Those that belong to no character match nothing, not even
// the second half of a pair that has the same value.
bool HasCharacter(const WideView& set, bool decoded, const Wide* character, std::uint32_t units) {
    for (std::uint32_t i = 0; i < set.Length();) {
        const Wide* wanted = set.Characters() + i;
        const std::uint32_t end = genutil::AlignUp(set.Characters(), set.Length(), i + 1);
        std::uint32_t n = end - i;
        const bool bytes = decoded && genutil::IsCarriedByte(*wanted);
        const genutil::FirstCharacter first(bytes ? set.Text() + i : nullptr,
                                            WideForm::kCharacters);
        if (bytes) {
            wanted = first.Units();
            n = first.Length();
        }
        if (n == units && std::equal(character, character + units, wanted)) return true;
        i = end;
    }
    return false;
}

}  // namespace

// Returns the length of the run from `start` on of characters that are (`in`) or are not in the
// set.
int CGNString::RunLength(const CGNString& set, int start, bool in) const {
    if (!Storage::EnsureWide(*this)) return 0;
    if (start < 0 || static_cast<unsigned>(start) >= m_wideLength)
        return static_cast<int>(m_wideLength);
    const WideForm form = Storage::FormFor(*this);
    const bool decoded = form == WideForm::kCharacters;
    const WideView characters(set.m_wide, set.m_wideLength, set.m_data, set.m_length, form);
    const Wide* const wanted = characters.Characters();
    if (!wanted) return static_cast<int>(m_wideLength);
    const auto from = static_cast<std::uint32_t>(start);
    std::uint32_t i = from;
    if (genutil::HasSurrogates(wanted, characters.Length())) {
        while (i < m_wideLength) {
            const std::uint32_t end = genutil::AlignUp(m_wide, m_wideLength, i + 1);
            if (HasCharacter(characters, decoded, m_wide + i, end - i) != in) break;
            i = end;
        }
    } else {
        const WideSet units(wanted, characters.Length());
        while (i < m_wideLength && units.Has(m_wide[i]) == in) ++i;
    }
    return static_cast<int>(i - from);
}

int CGNString::FindFirstOf(const CGNString& set, int start) const {
    return RunLength(set, start, false);
}

int CGNString::FindFirstNotOf(const CGNString& set, int start) const {
    return RunLength(set, start, true);
}

// -- Extraction by characters --------------------------------------------------------------------

namespace {

// Returns the end of a part that begins at `start`, not yet aligned to characters.
std::uint32_t EndOf(std::uint32_t length, std::uint32_t start, int count) {
    const std::uint32_t left = length - start;
    return start + (count >= 0 ? std::min(left, static_cast<std::uint32_t>(count)) : left);
}

}  // namespace

char* genutil::StringStorage::NewSubStr(const CGNString& s, std::uint32_t start, int count,
                                        std::uint32_t* length) {
    const std::uint32_t end = EndOf(s.m_wideLength, start, count);
    return NewPart(s, AlignDown(s.m_wide, s.m_wideLength, start),
                   AlignDown(s.m_wide, s.m_wideLength, end), length);
}

void CGNString::SubStr(CGNString& out, unsigned int start, int count) const {
    if (!Storage::EnsureWide(*this)) return;
    if (start >= m_wideLength) {
        out.Empty();
        return;
    }
    std::uint32_t length;
    char* const text = Storage::NewSubStr(*this, start, count, &length);
    if (!text) return;
    out.Empty();
    Storage::Adopt(out, text, length, length, Placing::kRebuilt);
}

void CGNString::SubStr(unsigned int start, int count) {
    if (!Storage::EnsureWide(*this)) return;
    if (start >= m_wideLength) {
        Empty();
        return;
    }
    std::uint32_t length;
    if (char* const text = Storage::NewSubStr(*this, start, count, &length))
        Storage::Adopt(*this, text, length, length, Placing::kAssigned);
}

void CGNString::MidString(CGNString& out, int start, int count) const {
    SubStr(out, static_cast<unsigned>(start), count);
}

void CGNString::LeftString(CGNString& out, unsigned int n) const {
    if (!Storage::EnsureWide(*this)) return;
    if (n >= m_wideLength) {
        out = *this;
        return;
    }
    std::uint32_t length;
    const std::uint32_t end = genutil::AlignDown(m_wide, m_wideLength, n);
    if (char* const text = Storage::NewPart(*this, 0, end, &length))
        Storage::Adopt(out, text, length, length, Placing::kRebuilt);
}

void CGNString::RightString(CGNString& out, unsigned int n) const {
    if (!Storage::EnsureWide(*this)) return;
    SubStr(out, n < m_wideLength ? m_wideLength - n : 0, -1);
}

void CGNString::Truncate(unsigned int n) {
    if (!Storage::EnsureWide(*this) || n >= m_wideLength) return;
    Storage::Edit(*this, genutil::AlignDown(m_wide, m_wideLength, n), m_wideLength, WideView());
}

void CGNString::TruncateAt(const char* ch) {
    if (IsEmpty() || !Storage::EnsureWide(*this)) return;
    const genutil::FirstCharacter wanted(ch, Storage::FormFor(*this));
    if (wanted.Length() == 0) return;
    const std::size_t at =
        genutil::FindUnits<Wide>(m_wide, m_wideLength, wanted.Units(), wanted.Length(), 0);
    if (at != kNotFound) Truncate(static_cast<unsigned>(at));
}

void CGNString::TruncateAt(char c) {
    const char text[2] = {c, 0};
    TruncateAt(text);
}

// -- Extraction by bytes -------------------------------------------------------------------------

// If the limit is beyond the end of the text, the result is padded to it with 0 bytes, because
// programs depend on it.
void CGNString::LeftStringInBytes(CGNString& out, unsigned int n) const {
    char* text = NewText<char>(n);
    if (!text) return;
    std::memset(text, 0, std::size_t{n} + 1);
    std::uint32_t length = n;
    if (m_length < n) {
        CopyUnits(text, static_cast<const char*>(m_data), m_length);
    } else {
        length = mbstrncpyi(text, m_data, n);
        while (length > 0 && text[length - 1] == 0) --length;
    }
    Storage::AdoptWithRoom(out, text, length, n);
}

void CGNString::RightStringInBytes(CGNString& out, unsigned int n) const {
    std::uint32_t start = m_length > n ? m_length - n : 0;
    if (start > 0 && mbidx(m_data, start) < start) {
        start = mbnextidx(m_data, start);
        // No character begins after the position, or the text ends before it.
        if (start < 1 || start > m_length) start = m_length;
    }
    n = genutil::LimitOf(n, m_length);
    char* text = NewText<char>(n);
    if (!text) return;
    const std::uint32_t length = m_length - start;
    CopyUnits(text, static_cast<const char*>(m_data + start), length);
    text[length] = 0;
    Storage::AdoptWithRoom(out, text, length, n);
}

void CGNString::SubStrInBytes(unsigned int start, int count) {
    Storage::DropWide(*this);
    if (start >= m_length) {
        // The length is unchanged. Programs that cut there look only at the text.
        if (m_capacity != 0) m_data[0] = 0;
        return;
    }
    const std::uint32_t left = m_length - start;
    m_length = count < 0 ? left : std::min(left, static_cast<std::uint32_t>(count));
    std::memmove(m_data, m_data + start, m_length);
    m_data[m_length] = 0;
}

// -- Editing -------------------------------------------------------------------------------------

unsigned char CGNString::InsertAt(int index, const CGNString& t) {
    if (!Storage::EnsureWide(*this) || index < 0 || static_cast<unsigned>(index) > m_wideLength)
        return 0;
    const std::uint32_t at =
        genutil::AlignDown(m_wide, m_wideLength, static_cast<std::uint32_t>(index));
    return Storage::Edit(*this, at, at, WideView(t.m_wide, t.m_wideLength, t.m_data, t.m_length));
}

unsigned char CGNString::RemoveAt(int index, int count) {
    if (!Storage::EnsureWide(*this) || index < 0 || static_cast<unsigned>(index) >= m_wideLength ||
        count < 0)
        return 0;
    const auto start = static_cast<std::uint32_t>(index);
    if (count == 0) return Storage::Rebuild(*this);
    const std::uint32_t end = EndOf(m_wideLength, start, count);
    return Storage::Edit(*this, genutil::AlignDown(m_wide, m_wideLength, start),
                         genutil::AlignUp(m_wide, m_wideLength, end), WideView());
}
