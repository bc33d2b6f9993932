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
using genutil::Owned;
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

int genutil::StringStorage::Find(const CGNString& s, const WideView& wanted, int start) {
    if (!EnsureWide(s) || start < 0 || static_cast<unsigned>(start) >= s.m_wideLength ||
        !wanted.Characters())
        return -1;
    const std::size_t at = FindUnits<Wide>(s.m_wide, s.m_wideLength, wanted.Characters(),
                                           wanted.Length(), static_cast<unsigned>(start));
    return at == kNotFound ? -1 : static_cast<int>(at);
}

int CGNString::Find(const CGNString& t, int start) const {
    return Storage::Find(*this, WideView(t.m_wide, t.m_wideLength, t.m_data, t.m_length), start);
}

int CGNString::Find(const char* t, int start) const {
    return Storage::Find(*this, t ? WideView(t, std::strlen(t)) : WideView("", 0), start);
}

int CGNString::StrChr(unsigned int start, char c) const {
    const char text[2] = {c, 0};
    return Find(text, static_cast<int>(start));
}

int CGNString::ReverseFind(const char* ch) const {
    Wide wanted;
    if (!genutil::FirstCharacter(ch, &wanted) || !Storage::EnsureWide(*this)) return -1;
    for (std::uint32_t i = m_wideLength; i-- > 0;)
        if (m_wide[i] == wanted) return static_cast<int>(i);
    return -1;
}

// The run from start on of characters that are in the set, or are not.
int CGNString::RunLength(const CGNString& set, int start, bool in) const {
    if (!Storage::EnsureWide(*this)) return 0;
    if (start < 0 || static_cast<unsigned>(start) >= m_wideLength)
        return static_cast<int>(m_wideLength);
    const WideView characters(set.m_wide, set.m_wideLength, set.m_data, set.m_length);
    if (!characters.Characters()) return static_cast<int>(m_wideLength);
    const WideSet wanted(characters.Characters(), characters.Length());
    const auto from = static_cast<std::uint32_t>(start);
    std::uint32_t i = from;
    while (i < m_wideLength && wanted.Has(m_wide[i]) == in) ++i;
    return static_cast<int>(i - from);
}

int CGNString::FindFirstOf(const CGNString& set, int start) const {
    return RunLength(set, start, false);
}

int CGNString::FindFirstNotOf(const CGNString& set, int start) const {
    return RunLength(set, start, true);
}

// -- Extraction by characters --------------------------------------------------------------------

void CGNString::SubStr(CGNString& out, unsigned int start, int count) const {
    if (!Storage::EnsureWide(*this)) return;
    if (start >= m_wideLength) {
        out.Empty();
        return;
    }
    const std::uint32_t left = m_wideLength - start;
    const std::uint32_t taken = count >= 0 ? std::min(left, static_cast<unsigned>(count)) : left;
    Storage::StoreWide(out, m_wide + start, taken);
}

void CGNString::SubStr(unsigned int start, int count) {
    SubStr(*this, start, count);
}

void CGNString::MidString(CGNString& out, int start, int count) const {
    SubStr(out, static_cast<unsigned>(start), count);
}

void CGNString::LeftString(CGNString& out, unsigned int n) const {
    if (!Storage::EnsureWide(*this)) return;
    if (n < m_wideLength)
        Storage::StoreWide(out, m_wide, n);
    else
        out = *this;
}

void CGNString::RightString(CGNString& out, unsigned int n) const {
    if (!Storage::EnsureWide(*this)) return;
    SubStr(out, n < m_wideLength ? m_wideLength - n : 0, -1);
}

void CGNString::Truncate(unsigned int n) {
    if (!Storage::EnsureWide(*this) || n >= m_wideLength) return;
    m_wide[n] = 0;
    m_wideLength = n;
    Storage::RebuildData(*this, 2);
}

void CGNString::TruncateAt(const char* ch) {
    Wide wanted;
    if (IsEmpty() || !genutil::FirstCharacter(ch, &wanted) || !Storage::EnsureWide(*this)) return;
    const std::size_t at = genutil::FindUnits<Wide>(m_wide, m_wideLength, &wanted, 1, 0);
    if (at != kNotFound) Truncate(static_cast<unsigned>(at));
}

void CGNString::TruncateAt(char c) {
    const char text[2] = {c, 0};
    TruncateAt(text);
}

// -- Extraction by bytes -------------------------------------------------------------------------

// A limit beyond the text is its length afterwards, with 0 bytes at the end: programs depend on it.
void CGNString::LeftStringInBytes(CGNString& out, unsigned int n) const {
    if (m_length < n) {
        Storage::Take(out, m_data, m_length, n);
        return;
    }
    char* text = NewText<char>(n);
    if (!text) return;
    std::memset(text, 0, std::size_t{n} + 1);
    std::uint32_t length = mbstrncpyi(text, m_data, n);
    while (length > 0 && text[length - 1] == 0) --length;
    Storage::Adopt(out, text, length, n);
}

void CGNString::RightStringInBytes(CGNString& out, unsigned int n) const {
    if (m_length <= n) {
        if (&out != this) Storage::Take(out, m_data, m_length, m_length);
        return;
    }
    std::uint32_t start = m_length - n;
    if (mbidx(m_data, start) < start) start = mbnextidx(m_data, start);
    // No character begins behind the place, or the text ends before it.
    if (start < 1 || start > m_length) {
        out.Empty();
        return;
    }
    Storage::Take(out, m_data + start, m_length - start, m_length - start);
}

void CGNString::SubStrInBytes(unsigned int start, int count) {
    Storage::DropWide(*this);
    if (start >= m_length) {
        // The length stays: programs that cut there go by the text alone.
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
    // The string itself may be inserted: its tail moves beyond its end, and what it grows out of
    // lives to the end of this.
    const WideView added(t.m_wide, t.m_wideLength, t.m_data, t.m_length);
    const std::uint64_t sum = std::uint64_t{m_wideLength} + added.Length();
    Owned<Wide> old;
    if (!added.Characters() || (m_wideCapacity < sum && !Storage::GrowWide(*this, sum, old)))
        return 0;
    Wide* const place = m_wide + index;
    CopyUnits(place + added.Length(), static_cast<const Wide*>(place),
              m_wideLength - static_cast<unsigned>(index));
    CopyUnits(place, added.Characters(), added.Length());
    m_wideLength = static_cast<std::uint32_t>(sum);
    m_wide[m_wideLength] = 0;
    return Storage::RebuildData(*this, 2);
}

unsigned char CGNString::RemoveAt(int index, int count) {
    if (!Storage::EnsureWide(*this) || index < 0 || static_cast<unsigned>(index) >= m_wideLength ||
        count < 0)
        return 0;
    const std::uint32_t left = m_wideLength - static_cast<unsigned>(index);
    const std::uint32_t removed = std::min(left, static_cast<std::uint32_t>(count));
    Wide* const place = m_wide + index;
    CopyUnits(place, static_cast<const Wide*>(place + removed), left - removed);
    m_wideLength -= removed;
    m_wide[m_wideLength] = 0;
    return Storage::RebuildData(*this, 2);
}
