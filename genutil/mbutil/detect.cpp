// mbDetect: collects the encodings in which a text is valid and ranks them.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "genutil/mbutil/detect_candidate.h"
#include "genutil/mbutil/detect_encodings.h"
#include "mbdetect.h"

using namespace genutil::detect;

namespace {

constexpr double kCostOfDoubling = 2.5 * kCostOfBit;  // letters that follow one another are not
                                                      // independent, so costs are discounted
constexpr double kSure = 0.9;
constexpr std::size_t kShort = 100;
constexpr double kMostOfDamaged = 0.6, kMostOfLetters = 0.9999;

struct Mark {
    const char* bytes;
    std::size_t length;
    const char* name;
    int codeSet;
};
constexpr Mark kMarks[] = {
    {"\xEF\xBB\xBF", 3, "utf-8", mbUtf8},       {"\xFF\xFE\0\0", 4, "utf-32", mbUtf32},
    {"\0\0\xFE\xFF", 4, "utf-32be", mbUtf32Be}, {"\xFF\xFE", 2, "utf-16", mbUtf16},
    {"\xFE\xFF", 2, "utf-16be", mbUtf16Be},
};

struct LanguageName {
    char name[4];
    const char* english;
};
constexpr LanguageName kLanguageNames[] = {
    {"en", "English"},    {"de", "German"},     {"fr", "French"},     {"es", "Spanish"},
    {"pt", "Portuguese"}, {"it", "Italian"},    {"nl", "Dutch"},      {"sv", "Swedish"},
    {"da", "Danish"},     {"nb", "Norwegian"},  {"nn", "Norwegian"},  {"fi", "Finnish"},
    {"is", "Icelandic"},  {"ca", "Catalan"},    {"gl", "Galician"},   {"eu", "Basque"},
    {"ga", "Irish"},      {"cy", "Welsh"},      {"af", "Afrikaans"},  {"id", "Indonesian"},
    {"sq", "Albanian"},   {"eo", "Esperanto"},  {"pl", "Polish"},     {"cs", "Czech"},
    {"sk", "Slovak"},     {"hu", "Hungarian"},  {"ro", "Romanian"},   {"hr", "Croatian"},
    {"sl", "Slovenian"},  {"et", "Estonian"},   {"lv", "Latvian"},    {"lt", "Lithuanian"},
    {"tr", "Turkish"},    {"vi", "Vietnamese"}, {"ru", "Russian"},    {"uk", "Ukrainian"},
    {"bg", "Bulgarian"},  {"be", "Belarusian"}, {"mk", "Macedonian"}, {"sr", "Serbian"},
    {"el", "Greek"},      {"he", "Hebrew"},     {"ar", "Arabic"},     {"fa", "Persian"},
    {"th", "Thai"},       {"ja", "Japanese"},   {"zh", "Chinese"},    {"tw", "Chinese"},
    {"ko", "Korean"},
};

const char* EnglishName(const char* language) {
    for (const LanguageName& row : kLanguageNames)
        if (std::strcmp(row.name, language) == 0) return row.english;
    return "";
}

Hint ReadHint(const char* locale) {
    Hint hint;
    if (locale == nullptr) return hint;
    std::size_t n = 0;
    while (n < 3 && ((locale[n] | 0x20) >= 'a' && (locale[n] | 0x20) <= 'z')) {
        hint.language[n] = static_cast<char>(locale[n] | 0x20);
        ++n;
    }
    const auto is = [&](const char* name) { return std::strcmp(hint.language, name) == 0; };
    const char* other = nullptr;
    if (is("en")) other = "";
    if (is("no")) other = "nb";
    if (is("iw")) other = "he";
    if (is("bs") || is("sh")) other = "hr";
    if (is("zh") && (std::strstr(locale, "TW") || std::strstr(locale, "HK"))) other = "tw";
    if (other) std::strcpy(hint.language, other);
    return hint;
}

void Describe(const Candidate& candidate, const Text& text, mbGuess* guess) {
    char* const out = guess->evidence;
    const std::size_t size = sizeof guess->evidence;
    const char* const plural = candidate.characters == 1 ? "" : "s";
    const char* const language = EnglishName(candidate.language);
    switch (candidate.kind) {
        case mbGuessMark:
            std::snprintf(out, size, "byte-order mark");
            break;
        case mbGuessAscii:
            std::snprintf(out, size, text.length ? "only ASCII, %zu byte%s" : "empty", text.length,
                          text.length == 1 ? "" : "s");
            break;
        case mbGuessValid:
            if (candidate.codeSet == mbUtf8)
                std::snprintf(out, size, "valid UTF-8, %zu multi-byte character%s",
                              candidate.characters, plural);
            else
                std::snprintf(out, size, "valid %s, %zu character%s", candidate.name,
                              candidate.characters, plural);
            break;
        case mbGuessEscapes:
            std::snprintf(out, size, "escape sequences, %zu wide character%s", candidate.characters,
                          plural);
            break;
        case mbGuessDamaged:
            std::snprintf(out, size, "%zu multi-byte character%s, but %zu invalid byte%s",
                          candidate.characters, plural, candidate.bad,
                          candidate.bad == 1 ? "" : "s");
            break;
        case mbGuessTooShort:
            std::snprintf(out, size, "too short to tell: %zu character%s above ASCII, as in %s",
                          candidate.characters, plural, language);
            break;
        default:
            std::snprintf(out, size, "letters as in %s, %zu character%s above ASCII", language,
                          candidate.characters, plural);
    }
}

void Write(const Candidate& candidate, const Text& text, double confidence, mbGuess* guess) {
    *guess = {};
    guess->codeSet = candidate.codeSet;
    guess->kind = candidate.kind;
    guess->confidence = confidence;
    const bool isTraditional = std::strcmp(candidate.language, "tw") == 0;
    std::snprintf(guess->language, sizeof guess->language, "%s",
                  isTraditional ? "zh" : candidate.language);
    std::snprintf(guess->name, sizeof guess->name, "%s", candidate.name);
    Describe(candidate, text, guess);
}

const Mark* FindMarkOf(const unsigned char* bytes, std::size_t length) {
    for (const Mark& mark : kMarks)
        if (length >= mark.length && std::memcmp(bytes, mark.bytes, mark.length) == 0) return &mark;
    return nullptr;
}

int WriteOne(const Candidate& candidate, const Text& text, double confidence, mbGuess* out) {
    Write(candidate, text, confidence, out);
    return 1;
}

bool HasNul(const Text& text) {
    return (text.present[0] & 1) != 0;
}

// Legacy text has no NUL, and few other control characters if any.
bool MayBeText(const Text& text) {
    return !HasNul(text) && text.controls * 50 <= text.length;
}

int Rank(Candidates& candidates, const Text& text, double noise, mbGuess* out, int max) {
    candidates.Sort();
    const double best = candidates.size() ? candidates[0].cost : noise;
    double total = std::exp2((best - noise) / kCostOfDoubling);
    if (total > 1) return 0;  // likelier no text
    for (const Candidate& candidate : candidates)
        total += std::exp2((best - candidate.cost) / kCostOfDoubling);
    int count = 0;
    bool isShort = false;
    for (Candidate candidate : candidates) {
        double confidence = std::exp2((best - candidate.cost) / kCostOfDoubling) / total;
        if (count == max || (count > 0 && confidence < 0.001)) break;
        confidence = std::min(confidence, candidate.bad > 0 ? kMostOfDamaged : kMostOfLetters);
        if (count == 0) isShort = confidence < kSure && text.length < kShort;
        if (isShort && candidate.kind == mbGuessLetters) candidate.kind = mbGuessTooShort;
        Write(candidate, text, confidence, &out[count++]);
    }
    return count;
}

// Returns the cost of the text if it is in none of these encodings.
double AddLegacyAndUtf8(const Prepared& prepared, const Text& text, const Hint& hint,
                        Candidates* candidates) {
    Candidates wide;
    AddUtf8(text, &wide);
    AddDoubleByte(text, hint, &wide);
    int rival = kNoRival;
    for (const Candidate& candidate : wide)
        if (candidate.bad == 0) rival = std::min(rival, candidate.highCost);
    const CommonCosts common = AddSingleByte(prepared, text, hint, rival, candidates);
    for (Candidate candidate : wide) {
        candidate.cost += common.ascii;
        if (candidate.codeSet != mbUtf8) candidate.cost += common.otherScript;
        candidates->Add(candidate);
    }
    return common.ascii + common.noise;
}

int DetectUnmarked(const Text& text, const char* hintName, mbGuess* out, int max) {
    if (text.high == 0 && text.escapes == 0 && MayBeText(text)) {
        Candidate ascii{"us-ascii", mbUtf8};
        ascii.kind = mbGuessAscii;
        return WriteOne(ascii, text, text.controls == 0 ? 1.0 : 0.95, out);
    }
    Candidates candidates;
    if (text.high == 0 && text.escapes != 0) {
        AddEscapes(text, &candidates);
        if (candidates.size() != 0) return WriteOne(candidates[0], text, 0.99, out);
    }
    const Prepared* const prepared = Prepare();
    if (prepared == nullptr) return 0;
    const Hint hint = ReadHint(hintName);
    // The units of a longer text in UTF-16 contain bytes that are control characters.
    double noise = 1.5 * 6 * static_cast<double>(std::min<std::size_t>(text.length, 2000)) * 4;
    if (text.controls != 0 || text.length < kShort) AddUtf16(text, &candidates);
    if (HasNul(text)) AddUtf32(text, &candidates);
    if (MayBeText(text) && text.high != 0)
        noise = AddLegacyAndUtf8(*prepared, text, hint, &candidates);
    return Rank(candidates, text, noise, out, max);
}

}  // namespace

int mbDetect(const char* bytes, size_t length, const char* hint, mbGuess* out, int max) {
    if (out == nullptr || max <= 0) return 0;
    if (bytes == nullptr) length = 0;
    const auto start = reinterpret_cast<const unsigned char*>(bytes);
    Text text;
    if (const Mark* const mark = FindMarkOf(start, length)) {
        Candidate candidate{mark->name, mark->codeSet};
        candidate.kind = mbGuessMark;
        WriteOne(candidate, text, 1.0, out);
        out->markLength = static_cast<int>(mark->length);
        return 1;
    }
    Examine(start, length, &text);
    return DetectUnmarked(text, hint, out, max);
}
