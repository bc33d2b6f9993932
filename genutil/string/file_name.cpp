// CGNString as the path of a file.
#include <cstdio>
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "genutil/string/wide_view.h"
#include "mbutil.h"

using genutil::CopyUnits;
using genutil::Owned;
using genutil::Placing;
using Storage = genutil::StringStorage;

namespace {

using Wide = unsigned short;

// Returns the position of the last character that is a or b, or `count` if there is none.
std::uint32_t FindLast(const Wide* text, std::uint32_t count, Wide a, Wide b) {
    for (std::uint32_t i = count; i-- > 0;)
        if (text[i] == a || text[i] == b) return i;
    return count;
}

}  // namespace

// Stores the parts before and after the last occurrence of either character. Both are created
// before either is stored, because one of the results may be this string, and because either both
// are stored or neither.
void CGNString::SplitAtLast(char a, char b, CGNString& before, CGNString& behind,
                            CGNString& whole) const {
    if (!Storage::EnsureWide(*this)) return;
    const std::uint32_t at =
        FindLast(m_wide, m_wideLength, static_cast<Wide>(a), static_cast<Wide>(b));
    if (at == m_wideLength) {
        const std::size_t length = std::strlen(m_data);
        char* const all = genutil::NewText<char>(length);
        if (!all) return;
        std::memcpy(all, m_data, length + 1);
        (&whole == &before ? behind : before).Empty();
        Storage::Adopt(whole, all, length, length, Placing::kAssigned);
        return;
    }
    std::uint32_t headLength, tailLength;
    Owned<char> head(Storage::NewPart(*this, 0, at, &headLength));
    Owned<char> tail(Storage::NewPart(*this, at + 1, m_wideLength, &tailLength));
    if (!head.Get() || !tail.Get()) return;
    Storage::Adopt(before, head.Take(), headLength, headLength, Placing::kAssigned);
    Storage::Adopt(behind, tail.Take(), tailLength, tailLength, Placing::kAssigned);
}

void CGNString::SplitFilePath(CGNString& dir, CGNString& file) const {
    SplitAtLast('/', '\\', dir, file, file);
}

void CGNString::SplitFileName(CGNString& base, CGNString& ext) const {
    SplitAtLast('.', '.', base, ext, base);
}

namespace {

// Returns true if no separator needs to be added. A "/" does not count as one.
bool EndsInBackslash(const CGNString& path) {
    if (path.IsEmpty()) return false;
    if (!mbIsMultiByte()) return static_cast<const char*>(path)[path.GetLength() - 1] == '\\';
    const unsigned int count = path.GetNumChars();
    return count > 0 && path.CompareSingleByteAt(static_cast<int>(count - 1), '\\');
}

}  // namespace

unsigned char CGNString::MakeFilePath(const CGNString& dir, const CGNString& file) {
    const bool separated = EndsInBackslash(dir);
    const std::uint32_t dirLength = dir.m_length, fileLength = file.m_length;
    const std::uint64_t room = std::uint64_t{dirLength} + fileLength + 1;
    char* const path = genutil::NewText<char>(room);
    if (!path) return 0;
    std::uint32_t length = dirLength;
    CopyUnits(path, static_cast<const char*>(dir.m_data), dirLength);
    if (!separated) path[length++] = '\\';
    CopyUnits(path + length, static_cast<const char*>(file.m_data), fileLength);
    length += fileLength;
    path[length] = 0;
    Storage::AdoptWithRoom(*this, path, length, room);
    return 1;
}

// -- Short names ---------------------------------------------------------------------------------

namespace {

// A name in capitals of at most `limit` bytes. Characters that a short name cannot contain are left
// out.
class ShortName {
  public:
    explicit ShortName(std::size_t limit) : m_limit(limit) {}

    // Appends the characters from `at` to `end` of a text, as far as they fit.
    void Take(const Wide* text, std::uint32_t at, std::uint32_t end) {
        for (; at < end; ++at) {
            char character[8];
            const int length = Write(text, end, at, character);
            if (length == 0) continue;
            if (m_length + static_cast<std::size_t>(length) > m_limit) return;
            std::memcpy(m_text + m_length, character, static_cast<std::size_t>(length));
            m_length += static_cast<std::size_t>(length);
        }
    }
    const char* Text() const { return m_text; }  // terminated
    bool IsEmpty() const { return m_length == 0; }

  private:
    static bool IsBarred(Wide c) {
        const bool isHalf = genutil::IsSurrogate(c) && (c < 0xDD00 || c > 0xDDFF);
        return c <= ' ' || c == 0x7F || isHalf ||
               (c < 0x80 && std::strchr("\"*+,./:;<=>?[\\]|", c));
    }
    static int Write(const Wide* text, std::uint32_t end, std::uint32_t at, char* out) {
        const Wide c = text[at];
        if (IsBarred(c)) return 0;
        const Wide upper = genutil::ToUpperWide(c);
        const int length = upper == c ? -1 : genutil::ToNarrowCharacter(out, upper);
        return length < 0 ? genutil::CharacterBytes(text, end, at, out) : length;
    }

    const std::size_t m_limit;
    std::size_t m_length = 0;
    char m_text[16] = {};
};

}  // namespace

void CGNString::ForceTo8By3() {
    if (!Storage::EnsureWide(*this)) return;
    const std::uint32_t separator = FindLast(m_wide, m_wideLength, '/', '\\');
    const std::uint32_t begin = separator == m_wideLength ? 0 : separator + 1;
    const std::uint32_t dot = begin + FindLast(m_wide + begin, m_wideLength - begin, '.', '.');
    ShortName base(8), extension(3);
    base.Take(m_wide, begin, dot);
    if (dot < m_wideLength) (base.IsEmpty() ? base : extension).Take(m_wide, dot + 1, m_wideLength);
    char shortName[16];
    const int length =
        std::snprintf(shortName, sizeof shortName, extension.IsEmpty() ? "%s" : "%s.%s",
                      base.Text(), extension.Text());
    std::uint32_t headLength;
    const Owned<char> head(Storage::NewPart(*this, 0, begin, &headLength));
    const std::uint64_t whole = std::uint64_t{headLength} + static_cast<unsigned>(length);
    char* const text = head.Get() ? genutil::NewText<char>(whole) : nullptr;
    if (!text) return;
    std::memcpy(text, head.Get(), headLength);
    std::memcpy(text + headLength, shortName, static_cast<std::size_t>(length) + 1);
    Storage::Adopt(*this, text, whole, whole, Placing::kStored);
}
