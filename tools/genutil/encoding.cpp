#include "tools/genutil/encoding.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "mbutil.h"
#include "tools/genutil/utf8.h"

namespace {

std::string UpperCase(std::string name) {
    for (char& c : name)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

bool Contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

unsigned Byte(const std::string& text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

std::size_t HighBytes(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }));
}

// Returns true if the text ends in an incomplete character at a position, as a part of a file may.
bool IsCutAt(const std::string& text, std::size_t at) {
    const std::size_t left = text.size() - at;
    const unsigned lead = Byte(text, at);
    if (left > 3 || lead < 0xC2 || lead > 0xF4) return false;
    if (left >= (lead < 0xE0 ? 2u : lead < 0xF0 ? 3u : 4u)) return false;
    for (std::size_t i = at + 1; i < text.size(); ++i)
        if ((Byte(text, i) & 0xC0) != 0x80) return false;
    return true;
}

// Damaged UTF-8 is still UTF-8, but other encodings occasionally also form a valid sequence.
bool IsUtf8(const std::string& text) {
    std::size_t good = 0, bad = 0;
    for (std::size_t i = 0; i < text.size();) {
        const int length = Utf8Length(text, i);
        if (length > 1) ++good;
        if (length == 0 && IsCutAt(text, i)) break;
        if (length == 0) ++bad;
        i += static_cast<std::size_t>(std::max(length, 1));
    }
    return good > 0 && bad * 20 <= good;
}

// Returns the number of ASCII units if the text is UTF-16 in that byte order. Returns 0 if it is
// not, or has more than a few control characters.
std::size_t AsciiUnits(const std::string& text, bool bigEndian) {
    std::size_t ascii = 0, controls = 0;
    bool high = false;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const unsigned unit = bigEndian ? Byte(text, i) << 8 | Byte(text, i + 1)
                                        : Byte(text, i + 1) << 8 | Byte(text, i);
        const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
        const bool control = unit < 0x20 && !(unit >= 0x09 && unit <= 0x0D) && unit != 0x1B;
        if (low != high || unit >= 0xFFFE) return 0;
        high = unit >= 0xD800 && unit <= 0xDBFF;
        ascii += unit < 0x80;
        controls += control;
    }
    return high || controls * 100 > ascii ? 0 : ascii;
}

// Counts the characters of the text that are invalid in a code set.
std::size_t Losses(const std::string& text, int codeSet) {
    mbConversion conversion = {};
    char* out = nullptr;
    if (!mbConvertAlloc(text.data(), text.size(), codeSet, &out, mbUtf8, &conversion))
        return text.size();
    std::free(out);
    return conversion.lost;
}

Detection DetectJapanese(const std::string& text) {
    const int found = mbDetectJapanese(text.data(), text.size(), nullptr);
    if (found == mbJis) return {Detection::kCertain, {mbJis}, 0};
    if (found == 0) return {Detection::kUnknown, {mbWestern}, 0};
    // The detection stops at the first decisive bytes. The whole text may give a different result.
    const std::size_t asEucJp = Losses(text, mbEucJp), asShiftJis = Losses(text, mbShiftJis);
    if (std::min(asEucJp, asShiftJis) * 10 > HighBytes(text))
        return {Detection::kUnknown, {mbWestern}, 0};
    if (asEucJp != asShiftJis)
        return {Detection::kCertain, {asEucJp < asShiftJis ? mbEucJp : mbShiftJis}, 0};
    // Kanji in EUC-JP are far more common than texts of half-width katakana.
    if (found != mbEucJp && found != mbShiftJis) return {Detection::kEucJpOrShiftJis, {mbEucJp}, 0};
    return {Detection::kCertain, {found}, 0};
}

}  // namespace

std::optional<Encoding> FindEncoding(const std::string& name) {
    const int codeSet = mbGetCodeSetFromCharset(name.c_str());
    const std::string upper = UpperCase(name);
    // The lookup returns "Western" for unknown names.
    if (codeSet == mbWestern && !Contains(upper, "1252") && !Contains(upper, "WESTERN") &&
        !upper.ends_with("ASCII"))
        return {};
    if (codeSet == mbUtf16Be) return Encoding{mbUtf16, true};
    if (codeSet != mbUtf16) return Encoding{codeSet};
    const bool bigEndian = upper.ends_with("BE");
    return Encoding{codeSet, bigEndian, !bigEndian && !upper.ends_with("LE")};
}

std::string NameOf(Encoding encoding) {
    char name[22];
    SetCharset(name, encoding.codeSet);
    std::string text = encoding.codeSet == mb8859_10 ? "iso-8859-10" : name;
    if (encoding.bigEndian) text += "be";
    return text;
}

std::string ListEncodings() {
    std::string list = " ";
    std::size_t width = 1;
    const auto add = [&](const std::string& name) {
        if (width + name.size() > 95) {
            list += "\n ";
            width = 1;
        }
        list.append(1, ' ').append(name);
        width += 1 + name.size();
    };
    for (int codeSet = 0; codeSet <= mbUtf32Be; ++codeSet) {
        const std::string name = NameOf({codeSet});
        // A name that two code sets share denotes the first.
        if (!name.empty() && mbGetCodeSetFromCharset(name.c_str()) == codeSet &&
            codeSet != mbUtf16Be)
            add(name);
    }
    add("utf-16le");
    add("utf-16be");
    return list;
}

void SwapUnits(std::string* text) {
    for (std::size_t i = 0; i + 1 < text->size(); i += 2) std::swap((*text)[i], (*text)[i + 1]);
}

std::size_t MarkLength(const std::string& text, Encoding encoding) {
    if (encoding.codeSet == mbUtf8) return text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    if (encoding.codeSet != mbUtf16) return 0;
    return text.starts_with(encoding.bigEndian ? "\xFE\xFF" : "\xFF\xFE") ? 2 : 0;
}

Detection Detect(const std::string& text) {
    for (const Encoding encoding : {Encoding{mbUtf8}, Encoding{mbUtf16}, Encoding{mbUtf16, true}})
        if (const std::size_t length = MarkLength(text, encoding))
            return {Detection::kCertain, encoding, length};
    if (Contains(text, "\x1B") && mbDetectJapanese(text.data(), text.size(), nullptr) == mbJis)
        return {Detection::kCertain, {mbJis}, 0};
    if (text.find('\0') != std::string::npos && text.size() % 2 == 0) {
        const std::size_t little = AsciiUnits(text, false), big = AsciiUnits(text, true);
        if (little != big) return {Detection::kCertain, {mbUtf16, big > little}, 0};
    }
    if (HighBytes(text) == 0) return {Detection::kAscii, {mbUtf8}, 0};
    if (IsUtf8(text)) return {Detection::kCertain, {mbUtf8}, 0};
    return DetectJapanese(text);
}

std::string Describe(const Detection& detection) {
    switch (detection.kind) {
        case Detection::kAscii:
            return "ascii";
        case Detection::kEucJpOrShiftJis:
            return "euc-jp or shift_jis";
        case Detection::kUnknown:
            return "unknown";
        case Detection::kCertain:
            break;
    }
    return NameOf(detection.encoding) + (detection.markLength ? " with byte-order mark" : "");
}
