// Stepping, searching, tokens and decoding of any bytes in any code set, compared with slow walks.
// The first byte chooses the code set, the second the number of bytes in the needle.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "fuzz/check.h"
#include "fuzz/slow_step.h"
#include "mbutil.h"

namespace {

// Returns a copy of exactly the text's size, up to its first NUL.
std::unique_ptr<char[]> Exact(const std::string& text) {
    const std::size_t length = std::strlen(text.c_str());
    auto copy = std::make_unique<char[]>(length + 1);
    std::memcpy(copy.get(), text.c_str(), length + 1);
    return copy;
}

std::ptrdiff_t Offset(const char* found, const char* s) {
    return found ? found - s : -1;
}

void CheckSteps(const char* s, const std::string& text, int codeSet) {
    const auto starts = slow::Starts(text, codeSet);
    Check(mbcharcount(s, static_cast<unsigned>(text.size())) == starts.size() - 1, "count");
    Check(mbidx(s, 1000) == text.size(), "no place behind the text");
    for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
        const auto* p = reinterpret_cast<const unsigned char*>(s) + starts[i];
        const int size = static_cast<int>(starts[i + 1] - starts[i]);
        const bool isSingle =
            *p < 0x80 || codeSet == mbJis || (codeSet == mbShiftJis && *p >= 0xA1 && *p <= 0xDF);
        Check(mblenExt(p, 4, codeSet) == (size > 1 || isSingle ? size : -1), "length");
        const bool last = starts[i + 1] >= text.size();
        for (unsigned at = starts[i]; at < starts[i + 1]; ++at) {
            Check(mbidx(s, at) == starts[i], "start of a character");
            Check(mbnextidx(s, at) == (last ? 0 : starts[i + 1]), "next character");
        }
    }
}

void CheckSearches(const char* s, const std::string& text, const std::string& needle, int codeSet) {
    if (needle.empty()) return;
    Check(Offset(mbstrstr(s, needle.c_str()), s) == slow::Find(text, needle, codeSet),
          "first match");
    Check(Offset(mbstrrstr(s, needle.c_str()), s) == slow::Find(text, needle, codeSet, true),
          "last match");
    long first = -1, last = -1;
    const auto starts = slow::Starts(text, codeSet);
    for (std::size_t i = 0; mbIsMultiByte() && i + 1 < starts.size(); ++i)
        if (text[starts[i]] == needle[0]) {
            if (first < 0) first = starts[i];
            last = starts[i];
        }
    const auto wanted = static_cast<signed char>(needle[0]);
    if (mbIsMultiByte())
        Check(Offset(mbstrchr(s, wanted), s) == first && Offset(mbstrrchr(s, wanted), s) == last,
              "characters by their first byte");
    const char* found = mbstrpbrk(s, needle.c_str());
    Check(
        mbstrcspn(s, needle.c_str()) == (found ? static_cast<std::size_t>(found - s) : text.size()),
        "set of characters");
}

// Checks the position of the first byte that is not a character and does not begin one.
void CheckValidation(const std::string& text, int codeSet) {
    const auto starts = slow::Starts(text, codeSet);
    const auto isBad = [&](std::size_t i) {
        const auto byte = static_cast<unsigned char>(text[starts[i]]);
        const bool isKana = codeSet == mbShiftJis && byte >= 0xA1 && byte <= 0xDF;
        return starts[i + 1] - starts[i] == 1 && byte >= 0x80 && !isKana;
    };
    std::size_t first = 0;
    while (first + 1 < starts.size() && !isBad(first)) ++first;
    const bool valid = first + 1 == starts.size();
    unsigned bad = 12345;
    Check((mbvalidatestring(text.c_str(), &bad, codeSet) != 0) == valid, "valid text");
    Check(bad == (valid ? 12345 : starts[first]), "first invalid byte");
}

// Tokens are parts of the text, in order, and do not begin with a delimiter.
void CheckTokens(const std::string& text, const std::string& delimiters) {
    const auto copy = Exact(text);
    const char* behind = copy.get();
    for (char* token = mbstrtok(copy.get(), delimiters.c_str()); token;
         token = mbstrtok(nullptr, delimiters.c_str())) {
        Check(token >= behind && *token, "token in order");
        Check(delimiters.empty() || mbstrcspn(token, delimiters.c_str()) == std::strlen(token),
              "token without delimiter");
        behind = token + std::strlen(token);
        Check(behind <= copy.get() + text.size(), "token in the text");
    }
}

// Long texts are compared in blocks, short ones are not. A common beginning makes no difference,
// whether a byte is part of a character or damaged.
void CheckComparison(const std::string& text, const std::string& needle) {
    std::string a = text.substr(0, text.size() % 8), b = a;
    // Another byte, or a letter in the other case, which is not a letter after a lead byte.
    if (!a.empty() && !needle.empty()) b[text.size() % a.size()] = needle[0];
    if (!a.empty() && text.size() % 3 == 0) b = a, b[a.size() - 1] ^= 0x20;
    const std::string same(56, 'x'), capital(56, 'X'), more(70, text.size() % 2 ? 'y' : '\xA4');
    const auto longA = Exact(same + a + more), longB = Exact(capital + b + more);
    const auto shortA = Exact(a + more.substr(0, 40)), shortB = Exact(b + more.substr(0, 40));
    Check(mbstricmp(longA.get(), longB.get()) == mbstricmp(shortA.get(), shortB.get()), "order");
    for (unsigned n = 0; n < 9; ++n)
        Check(mbstrnicmp(longA.get(), longB.get(), 56 + n) ==
                  mbstrnicmp(shortA.get(), shortB.get(), n),
              "order up to a count");
}

void CheckCopies(const char* s, const std::string& text, int codeSet) {
    for (const unsigned n : {0u, 1u, 2u, 3u, static_cast<unsigned>(text.size() / 2)}) {
        std::string dst(n + 1, '#');
        const unsigned copied = mbstrncpyi(dst.data(), s, n);
        Check(copied <= n && dst[n] == '#' && !std::memcmp(dst.data(), s, copied),
              "copy within bounds");
        const auto starts = slow::Starts(text, codeSet);
        const auto behind = std::upper_bound(starts.begin(), starts.end(), n);
        Check(!mbIsMultiByte() || copied == *(behind - 1), "copy of whole characters");
    }
    auto upper = Exact(text);
    mbstrtoupper(upper.get());
    Check(mbstricmp(s, upper.get()) == 0, "upper case compares equal");
    // After a lead byte mbstrnicmp compares bytes, valid or not.
    unsigned bad = 0;
    if (mbvalidatestring(s, &bad, mbGetLocaleCodeSet()))
        Check(mbstrnicmp(s, upper.get(), static_cast<unsigned>(text.size())) == 0,
              "also up to a count");
    char* decoded = nullptr;
    const unsigned length = mbUrlDecode(s, &decoded);
    Check(decoded && length <= text.size() && !decoded[length], "decoding does not grow");
    std::free(decoded);
    for (const unsigned most : {0u, 1u, 2u, 5u, 100u})
        Check(UTF8Limit(s, most) <= most && UTF8Limit(s, most) <= text.size(), "UTF-8 limit");
    MaxStringLengthOnWinAndUnix(s);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    static constexpr int kCodeSets[] = {0, 3, 4, 5, 7, 9, 10, 11, 12, 65, 8, 13};
    const int codeSet = kCodeSets[data[0] % std::size(kCodeSets)];
    mbIsMultiByte();
    InitMbutilExt(codeSet);
    const std::string all(reinterpret_cast<const char*>(data) + 2, size - 2);
    const std::size_t cut = data[1] % 5 < all.size() ? data[1] % 5 : all.size();
    const std::string needle = std::string(all, 0, cut).c_str(),
                      text = std::string(all, cut).c_str();
    const auto s = Exact(text);
    if (mbIsMultiByte()) CheckSteps(s.get(), text, codeSet);
    CheckSearches(s.get(), text, needle, codeSet);
    CheckTokens(text, needle);
    CheckComparison(text, needle);
    CheckCopies(s.get(), text, codeSet);
    const bool isListed = codeSet != mbJis && codeSet != mbUtf8;
    if (mbIsMultiByte() && isListed) CheckValidation(text, codeSet);
    return 0;
}
