// What CGNString should be, read off its description: every operation decodes the whole text and
// encodes the whole result.
#pragma once

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "mbutil.h"

namespace slow {

using Units = std::u16string;

inline bool IsHigh(char16_t c) {
    return c >= 0xD800 && c < 0xDC00;
}
inline bool IsLow(char16_t c) {
    return c >= 0xDC00 && c < 0xE000;
}

// The whole of a text in another code set; false where something of it has no counterpart.
inline bool Convert(const std::string& text, int from, std::string* out, int to) {
    mbConversion report{};
    char* made = nullptr;
    Check(mbConvertAlloc(text.data(), text.size(), from, &made, to, &report), "conversion");
    out->assign(made, report.produced);
    std::free(made);
    return report.lost == 0;
}

inline bool DecodeUtf8(const std::string& text, Units* units) {
    for (std::size_t i = 0; i < text.size();) {
        const auto at = [&](std::size_t k) {
            return i + k < text.size() ? static_cast<unsigned char>(text[i + k]) : 0u;
        };
        const unsigned lead = at(0);
        const unsigned n = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (n > 1 && (lead < 0xC2 || lead > 0xF4)) return false;
        unsigned c = n == 1 ? lead : lead & (0x7F >> n);
        for (unsigned k = 1; k < n; ++k) {
            if ((at(k) & 0xC0) != 0x80) return false;
            c = c << 6 | (at(k) & 0x3F);
        }
        if ((n == 3 && (c < 0x800 || (c >= 0xD800 && c < 0xE000))) ||
            (n == 4 && (c < 0x10000 || c > 0x10FFFF)))
            return false;
        if (n == 4) *units += static_cast<char16_t>(0xD7C0 + (c >> 10));
        *units += static_cast<char16_t>(n == 4 ? 0xDC00 + (c & 0x3FF) : c);
        i += n;
    }
    return true;
}

inline std::string EncodeUtf8(const Units& units) {
    std::string text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        unsigned c = units[i];
        if (IsHigh(units[i])) c = 0x10000 + ((c & 0x3FF) << 10 | (units[++i] & 0x3FFu));
        const unsigned n = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
        text += static_cast<char>(n == 1 ? c : (0xF00u >> n & 0xFF) | c >> 6 * (n - 1));
        for (unsigned k = n - 1; k-- > 0;) text += static_cast<char>(0x80 | (c >> 6 * k & 0x3F));
    }
    return text;
}

inline bool Decode(const std::string& text, int codeSet, Units* units) {
    if (codeSet == mbUtf8) return DecodeUtf8(text, units);
    std::string bytes;
    if (!Convert(text, codeSet, &bytes, mbUtf16)) return false;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        *units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                        static_cast<unsigned char>(bytes[i + 1]) << 8);
    return true;
}

inline std::string Encode(const Units& units, int codeSet) {
    if (codeSet == mbUtf8) return EncodeUtf8(units);
    std::string bytes, text;
    for (const char16_t c : units) {
        bytes += static_cast<char>(c & 0xFF);
        bytes += static_cast<char>(c >> 8);
    }
    Check(Convert(bytes, mbUtf16, &text, codeSet), "characters come back");
    return text;
}

// A text as its positions have it: 16-bit characters, or bytes where it is invalid.
class Text {
  public:
    Text(const std::string& bytes, int codeSet) : m_bytes(bytes), m_codeSet(codeSet) {
        m_valid = Decode(bytes, codeSet, &m_units);
        if (!m_valid) FindStarts();
        for (std::size_t i = 0; m_valid && i < m_units.size(); ++i)
            m_inside.push_back(IsLow(m_units[i]) && i > 0 && IsHigh(m_units[i - 1]));
    }

    bool IsValid() const { return m_valid; }
    std::size_t Size() const { return m_inside.size(); }
    const std::string& Bytes() const { return m_bytes; }
    bool IsInside(std::size_t at) const { return at < Size() && m_inside[at]; }
    std::size_t Down(std::size_t at) const {
        while (IsInside(at)) --at;
        return at;
    }
    std::size_t Up(std::size_t at) const {
        while (IsInside(at)) ++at;
        return at;
    }

    // The bytes of some positions.
    std::string Part(std::size_t begin, std::size_t end) const {
        if (begin > Size()) begin = Size();
        if (end > Size()) end = Size();
        if (end < begin) end = begin;
        return m_valid ? Encode(m_units.substr(begin, end - begin), m_codeSet)
                       : m_bytes.substr(begin, end - begin);
    }
    std::string Character(std::size_t at) const {
        return at >= Size() || IsInside(at) ? "" : Part(at, Up(at + 1));
    }

    // The text with some positions replaced, encoded in one go where all of it is valid.
    std::string With(std::size_t begin, std::size_t end, const Text& other) const {
        if (m_valid && other.m_valid)
            return Encode(m_units.substr(0, begin) + other.m_units + m_units.substr(end),
                          m_codeSet);
        return Part(0, begin) + other.m_bytes + Part(end, Size());
    }

    // Whether other stands at a place, as whole characters.
    bool Has(std::size_t at, const Text& other) const {
        if (IsInside(at) || IsInside(at + LengthOf(other))) return false;
        if (m_valid && !other.m_valid) return false;
        if (m_valid) return m_units.compare(at, other.Size(), other.m_units) == 0;
        return at + other.m_bytes.size() <= Size() &&
               m_bytes.compare(at, other.m_bytes.size(), other.m_bytes) == 0;
    }
    // In positions of this text.
    std::size_t LengthOf(const Text& other) const {
        return m_valid ? other.Size() : other.m_bytes.size();
    }
    long Find(const Text& other, std::size_t start) const {
        if (start >= Size()) return -1;
        if (other.m_bytes.empty()) return static_cast<long>(start);
        for (; start + LengthOf(other) <= Size(); ++start)
            if (Has(start, other)) return static_cast<long>(start);
        return -1;
    }
    std::vector<Text> Characters() const {
        std::vector<Text> all;
        for (std::size_t at = 0; at < Size(); at = Up(at + 1))
            all.emplace_back(m_valid ? Character(at) : m_bytes.substr(at, Up(at + 1) - at),
                             m_codeSet);
        return all;
    }

    // The first character of a text, in bytes; empty where there is none.
    static std::string First(const std::string& text, int codeSet) {
        for (std::size_t n = 1; n <= text.size() && n <= 16; ++n) {
            Units units;
            const std::string first = text.substr(0, n);
            if (!Decode(first, codeSet, &units) || units.empty()) continue;
            bool isEscape = false;  // which only more bytes tell from an escape character
            for (std::size_t more = n + 1; units[0] == 0x1B && more <= n + 3; ++more) {
                Units longer;
                isEscape |= more <= text.size() && Decode(text.substr(0, more), codeSet, &longer) &&
                            (longer.empty() || longer[0] != 0x1B);
            }
            if (!isEscape) return first;
        }
        return "";
    }

  private:
    void FindStarts() {
        for (std::size_t at = 0; at < m_bytes.size();) {
            std::size_t length = First(m_bytes.substr(at, 4), m_codeSet).size();
            const int step = mblenExt(reinterpret_cast<const unsigned char*>(m_bytes.c_str()) + at,
                                      static_cast<unsigned>(m_bytes.size() - at), m_codeSet);
            if (length == 0 && step > 0 && at + static_cast<std::size_t>(step) <= m_bytes.size())
                length = static_cast<std::size_t>(step);
            if (length == 0) length = 1;
            for (std::size_t i = 0; i < length; ++i) m_inside.push_back(i > 0);
            at += length;
        }
    }

    std::string m_bytes;
    int m_codeSet;
    bool m_valid;
    Units m_units;
    std::vector<bool> m_inside;
};

}  // namespace slow
