// Line ends and lengths of texts that are exchanged between client and server.
#include <algorithm>
#include <cstring>

#include "genutil/mbutil/code_set.h"
#include "genutil/string/storage.h"
#include "mbutil.h"
#include "ostext.h"

using genutil::NewText;
using genutil::Owned;
using genutil::Placing;
using genutil::Rule;
using genutil::Units;
using Storage = genutil::StringStorage;

int OSClientFormatString(CGNString& text) {
    static constexpr Rule kRules[] = {{"\r\n", "\r\n"}, {"\n", "\r\n"}, {"\x01", "\n"}};
    Storage::Replace(text, kRules, std::size(kRules), Units::kBytes, Placing::kStored);
    return static_cast<int>(text.GetLength());
}

int OSServerFormatString(CGNString& text) {
    static constexpr Rule kRule{"\r\n", "\n"};
    Storage::Replace(text, &kRule, 1, Units::kBytes, Placing::kStored);
    return static_cast<int>(text.GetLength());
}

int OSClientGetNumLines(const CGNString& text) {
    if (text.IsEmpty()) return 0;
    const char* const bytes = text;
    return static_cast<int>(std::count(bytes + 1, bytes + text.GetLength(), '\n'));
}

void CGNString::ClientFormat() {
    OSClientFormatString(*this);
}
void CGNString::ServerFormat() {
    OSServerFormatString(*this);
}
int CGNString::GetNumLines() const {
    return OSClientGetNumLines(*this);
}

namespace {

bool IsEastAsian(unsigned language) {
    constexpr unsigned kChinese = 0x04, kJapanese = 0x11, kKorean = 0x12;
    const unsigned primary = genutil::PrimaryLanguage(language);
    return primary == kChinese || primary == kJapanese || primary == kKorean;
}

// Returns the code set of the server's texts for the current code set.
int ServerCodeSet(int codeSet) {
    return codeSet == mbShiftJis ? mbEucJp : codeSet;
}

}  // namespace

int OSFindPlatformStringLength(const char* text, int limit) {
    if (!IsEastAsian(genutil::UserDefaultLanguage())) return limit;
    if (!text || limit <= 0) return 0;
    mbIsMultiByte();  // initialises
    const auto most = static_cast<unsigned>(limit);
    const void* end = std::memchr(text, 0, most);
    const unsigned n =
        end ? static_cast<unsigned>(static_cast<const char*>(end) - text) : mbidx(text, most);
    // A conversion produces at most three bytes for each byte.
    const std::uint64_t room = std::uint64_t{n} * 3;
    const Owned<char> copy(NewText<char>(n)), server(NewText<char>(room)),
        back(NewText<char>(room * 3));
    if (!copy.Get() || !server.Get() || !back.Get()) return 0;
    std::memcpy(copy.Get(), text, n);
    copy.Get()[n] = 0;
    WindowsCodingToUnixCodingExt(copy.Get(), server.Get());
    if (std::strlen(server.Get()) > most)
        server.Get()[mbidxtype(server.Get(), most, ServerCodeSet(mbGetLocaleCodeSet()))] = 0;
    UnixCodingToWindowsCodingExt(server.Get(), back.Get());
    return static_cast<int>(std::strlen(back.Get()));
}

int FindUTF8StringLength(const char* text, int limit) {
    if (!text || limit <= 0) return 0;
    // Each character has at least one byte in UTF-8, so no more than `limit` characters fit.
    const auto most = static_cast<unsigned>(limit);
    const int codeSet = genutil::UserAnsiCodeSet();
    const std::size_t longest = static_cast<std::size_t>(mbmaxcharlenExt(codeSet));
    const std::uint64_t all = std::min(std::uint64_t{most} * longest, genutil::kMaxTextLength);
    std::size_t bytes = strnlen(text, static_cast<std::size_t>(all));
    if (text[bytes] != 0) bytes = mbidxtype(text, static_cast<unsigned>(bytes), codeSet);
    char* made = nullptr;
    if (codeSet < 0 || !mbConvertAlloc(text, bytes, codeSet, &made, mbUtf8, nullptr)) return 0;
    const Owned<char> utf8(made);
    const unsigned fits = UTF8Limit(made, most);
    return static_cast<int>(
        std::count_if(made, made + fits, [](char byte) { return (byte & 0xC0) != 0x80; }));
}
