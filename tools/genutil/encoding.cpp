#include "tools/genutil/encoding.h"

#include <algorithm>
#include <utility>

#include "mbutil.h"

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
