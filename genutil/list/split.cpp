// Splitting a CGNString at a delimiter, and its escapes of special characters.
#include <cstring>

#include "genlist.h"
#include "genstr.h"
#include "genutil/list/storage.h"
#include "genutil/mbutil/step.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "genutil/string/unit_search.h"
#include "genutil/string/wide_view.h"
#include "mbutil.h"

using genutil::Placing;
using genutil::Rule;
using genutil::Units;
using Storage = genutil::StringStorage;

// -- Splitting -----------------------------------------------------------------------------------

namespace {

using Byte = unsigned char;

// Returns true if an ASCII delimiter can be found by its bytes: none of them can be part of another
// character.
bool IsFoundByBytes(const char* delimiter) {
    const genutil::StepTable* table = genutil::g_currentStep;
    if (!table) return true;
    for (const auto* p = reinterpret_cast<const Byte*>(delimiter); *p; ++p)
        if (*p >= 0x80 || table->later[*p]) return false;
    return true;
}

// The positions of a delimiter in a text, in order.
class Delimiter {
  public:
    Delimiter(const char* text, std::size_t length, const char* delimiter)
        : m_text(text),
          m_length(length),
          m_delimiter(delimiter),
          m_size(std::strlen(delimiter)),
          m_byBytes(IsFoundByBytes(delimiter)),
          m_finder(AsBytes(text), length) {
        if (m_size == 0) return;
        m_finder.AddFirst(AsBytes(delimiter)[0]);
        if (m_size > 1) m_finder.RequireAt(m_size - 1, AsBytes(delimiter)[m_size - 1]);
    }
    std::size_t Size() const { return m_size; }

    // Returns the first position from `from` on, or the length of the text if there is none.
    std::size_t Next(std::size_t from) {
        if (m_size == 0 || from >= m_length) return m_length;
        if (!m_byBytes) {
            const char* found = mbstrstr(m_text + from, m_delimiter);
            return found ? static_cast<std::size_t>(found - m_text) : m_length;
        }
        for (std::size_t at = from; (at = m_finder.Next(at)) < m_length; ++at)
            if (m_size <= 2 || std::memcmp(m_text + at + 1, m_delimiter + 1, m_size - 2) == 0)
                return at;
        return m_length;
    }

  private:
    static const Byte* AsBytes(const char* text) { return reinterpret_cast<const Byte*>(text); }

    const char* const m_text;
    const std::size_t m_length;
    const char* const m_delimiter;
    const std::size_t m_size;
    const bool m_byBytes;
    genutil::UnitFinder<Byte> m_finder;
};

// Creates a string of n bytes. Returns null, after reporting it, if allocation fails.
CGNString* NewPart(const char* text, std::size_t n) {
    auto* part = genutil::New<CGNString>();
    if (!genutil::CheckListMemory(part) || n == 0) return part;
    Storage::Take(*part, text, n, n);
    if (!part->IsEmpty()) return part;
    delete part;
    return nullptr;
}

}  // namespace

// The parts are created before the list is emptied, because this string may be one of its items.
void CGNString::Split(CGNStringList& list, const char* delimiter) const {
    mbIsMultiByte();  // initialises
    CGNStringList parts(0, genutil::kListIncrement);
    const std::size_t length = std::strlen(m_data);
    Delimiter places(m_data, length, delimiter ? delimiter : "");
    for (std::size_t at = 0; at < length;) {
        const std::size_t found = places.Next(at);
        genutil::OwnedItems<CGNString>::Append(parts, NewPart(m_data + at, found - at));
        at = found + places.Size();
    }
    list.Free();
    genutil::ListStorage::SwapItems(list, parts);
}

void CGNString::Split(CGNStringList& list, unsigned char delimiter) const {
    const char text[2] = {static_cast<char>(delimiter), 0};
    Split(list, text);
}

// -- Escapes -------------------------------------------------------------------------------------

void CGNString::ExpandSpecials() {
    // Tabs are kept, because programs expect them in expanded texts.
    static constexpr Rule kRules[] = {{"\b", "\\b"}, {"\n", "\\n"},  {"\f", "\\f"},
                                      {"\r", "\\r"}, {"\"", "\\\""}, {"\\", "\\\\"}};
    Storage::Replace(*this, kRules, std::size(kRules), Units::kCharacters, Placing::kAssigned);
}

namespace {

using Wide = unsigned short;

bool IsDigit(Wide c) {
    return c >= '0' && c <= '9';
}

// Reads the escape after a backslash. Stored texts depend on these rules, however unusual.
struct Escape {
    Escape(const Wide* p, std::size_t left) : produces(true) {
        switch (p[0]) {
            case '\\':
                byte = '\\';
                return;
            case 'b':
                byte = '\b';
                return;
            case 'n':
                byte = '\n';
                return;
            case 'r':
                byte = '\r';
                return;
            case 't':
                byte = '\t';
                return;
            default:
                produces = IsDigit(p[0]);
                if (produces) ReadNumber(p, left);
        }
    }

    // Reads the digits among up to three characters. Of a number above 255 only the first two
    // count, and the span is shorter by one. The character after the span is also dropped.
    void ReadNumber(const Wide* p, std::size_t left) {
        std::size_t span = left < 3 ? left : 3;
        unsigned number = 0, digits = 0, firstTwo = 0;
        for (std::size_t i = 0; i < span; ++i) {
            if (!IsDigit(p[i])) continue;
            number = number * 10 + (p[i] - unsigned{'0'});
            if (++digits <= 2) firstTwo = number;
        }
        if (number > 255) {
            number = firstTwo;
            --span;
        }
        byte = static_cast<char>(number);
        taken = span + 1 < left ? span + 1 : left;
    }

    bool produces;          // otherwise the backslash represents itself
    char byte = 0;          // the resulting byte
    std::size_t taken = 1;  // number of characters after the backslash
};

}  // namespace

void CGNString::UnexpandSpecials() {
    if (!Storage::EnsureWide(*this)) return;
    const Wide backslash = '\\';
    const Wide* const wide = m_wide;
    const std::size_t count = m_wideLength;
    std::size_t at = genutil::FindUnits(wide, count, &backslash, 1, 0);
    if (at == genutil::kNotFound) return;
    // Room for every character, with escape sequences if the code set has them. A backslash escape
    // is longer than the byte that it produces.
    const bool broken = Storage::IsBroken(*this);
    const std::size_t longest = broken ? 1 : genutil::LongestNarrow();
    const std::uint64_t room = std::uint64_t{count} * (longest ? longest : 16);
    char* const text = genutil::NewText<char>(room);
    if (!text) return;
    std::size_t length = 0, done = 0;
    const auto convert = [&](std::size_t end) {
        if (broken) {
            genutil::CopyUnits(text + length, m_data + done, end - done);
            length += end - done;
            done = end;
            return;
        }
        length += static_cast<std::size_t>(genutil::ToNarrowLossy(
            text + length, static_cast<std::size_t>(room) - length, wide + done, end - done));
        done = end;
    };
    for (; at != genutil::kNotFound; at = genutil::FindUnits(wide, count, &backslash, 1, at)) {
        const std::size_t behind = at + 1;
        if (behind == count) break;
        const Escape escape(wide + behind, count - behind);
        if (!escape.produces) {
            at = behind;
            continue;
        }
        convert(at);
        const auto next = static_cast<std::uint32_t>(behind + escape.taken);
        at = done = genutil::AlignUp(wide, m_wideLength, next);
        text[length] = escape.byte;
        if (escape.byte == 0) {  // ends the text
            done = count;
            break;
        }
        ++length;
        if (at >= count) break;
    }
    convert(count);
    Storage::Adopt(*this, text, length, room, Placing::kAssigned);
}
