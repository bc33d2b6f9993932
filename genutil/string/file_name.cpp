// CGNString as the path of a file.
#include <cstdio>
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "mbutil.h"

using Storage = genutil::StringStorage;

namespace {

using Wide = unsigned short;

// The last character that is a or b; count when there is none.
std::uint32_t FindLast(const Wide* text, std::uint32_t count, Wide a, Wide b) {
    for (std::uint32_t i = count; i-- > 0;)
        if (text[i] == a || text[i] == b) return i;
    return count;
}

}  // namespace

// What stands before and behind the last of two characters. Both are made before either is stored,
// because one may be this string.
void CGNString::SplitAtLast(char a, char b, CGNString& before, CGNString& behind,
                            CGNString& whole) const {
    CGNString head, tail;
    if (!Storage::EnsureWide(*this)) return;
    const std::uint32_t at =
        FindLast(m_wide, m_wideLength, static_cast<Wide>(a), static_cast<Wide>(b));
    if (at == m_wideLength) {
        CGNString all(*this);
        before.Empty();
        behind.Empty();
        whole = all;
        return;
    }
    Storage::StoreWide(head, m_wide, at);
    Storage::StoreWide(tail, m_wide + at + 1, m_wideLength - at - 1);
    Storage::Swap(before, head);
    Storage::Swap(behind, tail);
}

void CGNString::SplitFilePath(CGNString& dir, CGNString& file) const {
    SplitAtLast('/', '\\', dir, file, file);
}

void CGNString::SplitFileName(CGNString& base, CGNString& ext) const {
    SplitAtLast('.', '.', base, ext, base);
}

namespace {

// Whether a separator need not be added. A "/" is none that counts.
bool EndsInBackslash(const CGNString& path) {
    if (path.IsEmpty()) return false;
    if (!mbIsMultiByte()) return static_cast<const char*>(path)[path.GetLength() - 1] == '\\';
    const unsigned int count = path.GetNumChars();
    return count > 0 && path.CompareSingleByteAt(static_cast<int>(count - 1), '\\');
}

}  // namespace

unsigned char CGNString::MakeFilePath(const CGNString& dir, const CGNString& file) {
    CGNString path;
    path.AllocateBuffer(dir.m_length + file.m_length + 1);
    path += dir;
    if (!EndsInBackslash(dir)) path += '\\';
    path += file;
    path.m_flags = m_flags;
    Storage::Swap(*this, path);
    return 1;
}

// -- Short names ---------------------------------------------------------------------------------

namespace {

// A name of at most so many bytes in capitals, without what such a name cannot hold.
class ShortName {
  public:
    explicit ShortName(std::size_t limit) : m_limit(limit) {}

    void Take(const Wide* p, const Wide* end) {
        for (; p < end; ++p) {
            char character[8];
            const int length = Write(*p, character);
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
        const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
        return c <= ' ' || c == 0x7F || surrogate ||
               (c < 0x80 && std::strchr("\"*+,./:;<=>?[\\]|", c));
    }
    static int Write(Wide c, char* out) {
        if (IsBarred(c)) return 0;
        int length = genutil::ToNarrowCharacter(out, genutil::ToUpperWide(c));
        if (length < 0) length = genutil::ToNarrowCharacter(out, c);
        return length < 0 ? 0 : length;
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
    const Wide *const name = m_wide + begin, *const end = m_wide + m_wideLength;
    const Wide* const dot = name + FindLast(name, m_wideLength - begin, '.', '.');
    ShortName base(8), extension(3);
    base.Take(name, dot);
    if (dot < end) (base.IsEmpty() ? base : extension).Take(dot + 1, end);
    char shortName[16];
    const int length =
        std::snprintf(shortName, sizeof shortName, extension.IsEmpty() ? "%s" : "%s.%s",
                      base.Text(), extension.Text());
    CGNString result;
    Storage::StoreWide(result, m_wide, begin);
    const std::uint32_t directory = result.GetLength();
    result += shortName;
    const bool whole = (directory != 0 || begin == 0) &&
                       result.GetLength() == directory + static_cast<std::uint32_t>(length);
    if (whole) Storage::Swap(*this, result);
}
