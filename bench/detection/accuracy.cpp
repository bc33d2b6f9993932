// The share of texts whose encoding mbDetect recognises, beside uchardet and ICU, and the time that
// it takes.
//
//     detect_accuracy FOLDER [SLICES]
//
// FOLDER has one UTF-8 file for each language, collected by texts.py. A slice is a part of a text
// of at most 20, 50, 200 or 2,000 bytes, cut between characters at a random place, with at least
// one character above ASCII. A guess is right if the slice, decoded with it, is the text.
#include <iconv.h>
#include <uchardet.h>
#include <unicode/ucsdet.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "mbdetect.h"

namespace {

struct Row {
    const char* languages;
    const char* encodings;  // as iconv names them
};
constexpr Row kRows[] = {
    {"en de fr es pt it nl sv da nb nn fi is ca gl eu ga af id",
     "CP1252 ISO-8859-1 ISO-8859-15 CP850"},
    {"sq", "CP1252 CP1250 ISO-8859-1"},
    {"cy", "ISO-8859-14"},
    {"eo", "ISO-8859-3"},
    {"pl cs sk hu hr sl", "CP1250 ISO-8859-2 CP852"},
    {"ro", "CP1250 ISO-8859-2 CP852 ISO-8859-16"},
    {"et lv lt", "CP1257 ISO-8859-13 ISO-8859-4"},
    {"tr", "CP1254 ISO-8859-9"},
    {"vi", "CP1258"},
    {"ru bg be mk sr", "CP1251 ISO-8859-5 CP866"},
    {"ru bg", "KOI8-R"},
    {"uk", "CP1251 ISO-8859-5 KOI8-U"},
    {"el", "CP1253 ISO-8859-7"},
    {"he", "CP1255 ISO-8859-8"},
    {"ar", "CP1256 ISO-8859-6"},
    {"fa", "CP1256"},
    {"th", "CP874"},
    {"ja", "CP932 EUC-JP ISO-2022-JP"},
    {"zh", "GBK"},
    {"tw", "BIG5 EUC-TW"},
    {"ko", "CP949 JOHAB ISO-2022-KR"},
};
constexpr const char* kUnicode[] = {"UTF-8", "UTF-16LE", "UTF-16BE"};
constexpr std::size_t kSizes[] = {20, 50, 200, 2000};

class Converter {
  public:
    Converter(const std::string& to, const std::string& from)
        : m_open(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (Known()) iconv_close(m_open);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool Known() const { return m_open != reinterpret_cast<iconv_t>(-1); }
    std::optional<std::string> Run(const std::string& text) const {
        if (!Known()) return {};
        iconv(m_open, nullptr, nullptr, nullptr, nullptr);
        std::string out(text.size() * 4 + 16, '\0');
        char* from = const_cast<char*>(text.data());
        char* to = out.data();
        std::size_t left = text.size(), room = out.size();
        if (iconv(m_open, &from, &left, &to, &room) != 0 || left != 0) return {};
        iconv(m_open, nullptr, nullptr, &to, &room);
        out.resize(out.size() - room);
        return out;
    }

  private:
    iconv_t m_open;
};

const Converter& Between(const std::string& to, const std::string& from) {
    static std::map<std::string, Converter> known;
    return known.try_emplace(to + "<" + from, to, from).first->second;
}

// The library's names that iconv spells otherwise. A name denotes the superset that is in use.
std::string IconvName(std::string name) {
    static const std::map<std::string, std::string> kNames = {
        {"gb2312", "GBK"},      {"gb18030", "GB18030"},   {"shift_jis", "CP932"},
        {"SHIFT_JIS", "CP932"}, {"Shift_JIS", "CP932"},   {"windows-874", "CP874"},
        {"ibm850", "CP850"},    {"ibm852", "CP852"},      {"ibm866", "CP866"},
        {"cp949", "CP949"},     {"windows-949", "CP949"}, {"EUC-KR", "CP949"},
        {"UHC", "CP949"},       {"GB2312", "GBK"},        {"MAC-CENTRALEUROPE", "MACCENTRALEUROPE"},
    };
    const auto found = kNames.find(name);
    return found == kNames.end() ? name : found->second;
}

using Guesses = std::vector<std::string>;

Guesses Ours(const std::string& text) {
    mbGuess guesses[3];
    const int count = mbDetect(text.data(), text.size(), nullptr, guesses, 3);
    Guesses names;
    for (int i = 0; i < count; ++i) names.push_back(guesses[i].name);
    return names;
}

Guesses Uchardet(const std::string& text) {
    static const uchardet_t detector = uchardet_new();
    uchardet_reset(detector);
    uchardet_handle_data(detector, text.data(), text.size());
    uchardet_data_end(detector);
    return {uchardet_get_charset(detector)};
}

Guesses Icu(const std::string& text) {
    UErrorCode error = U_ZERO_ERROR;
    static UCharsetDetector* const detector = ucsdet_open(&error);
    error = U_ZERO_ERROR;
    ucsdet_setText(detector, text.data(), static_cast<std::int32_t>(text.size()), &error);
    std::int32_t count = 0;
    const UCharsetMatch** const matches = ucsdet_detectAll(detector, &count, &error);
    Guesses names;
    for (std::int32_t i = 0; i < std::min(count, 3) && U_SUCCESS(error); ++i)
        names.push_back(ucsdet_getName(matches[i], &error));
    return names;
}

struct Detector {
    const char* name;
    Guesses (*detect)(const std::string&);
};
constexpr Detector kDetectors[] = {{"genutil", Ours}, {"uchardet", Uchardet}, {"ICU", Icu}};

struct Count {
    int right = 0, inThree = 0, all = 0;
    double Share(int n) const { return all ? 100.0 * n / all : 0; }
};

using Characters = std::vector<std::string>;

Characters Split(const std::string& text) {
    Characters characters;
    for (const char c : text) {
        if ((c & 0xC0) != 0x80) characters.emplace_back();
        characters.back() += c;
    }
    return characters;
}

struct Slice {
    std::string text, bytes;
};

bool HasWide(const std::string& utf8) {
    return std::any_of(utf8.begin(), utf8.end(), [](char c) { return (c & 0x80) != 0; });
}

// Finds the longest slice at a place that has at most `size` bytes in the encoding.
std::optional<Slice> SliceAt(const Characters& characters, std::size_t at, std::size_t size,
                             const Converter& encode) {
    std::optional<Slice> best;
    std::size_t low = 1, high = std::min(size, characters.size() - at);
    while (low <= high) {
        const std::size_t n = (low + high) / 2;
        std::string text;
        for (std::size_t i = at; i < at + n; ++i) text += characters[i];
        const auto bytes = encode.Run(text);
        if (!bytes) return {};
        if (bytes->size() <= size) {
            best = Slice{text, *bytes};
            low = n + 1;
        } else {
            high = n - 1;
        }
    }
    if (!best || !HasWide(best->text)) return {};
    return best;
}

// The text with what an encoding lacks replaced, as writers do; other paragraphs are left out.
std::string Adapt(std::string line, const std::string& language) {
    const auto replace = [&](const char* from, const char* to) {
        for (std::size_t at = 0; (at = line.find(from, at)) != std::string::npos;)
            line.replace(at, std::strlen(from), to);
    };
    if (language == "ro") {
        replace("ș", "ş");
        replace("ț", "ţ");
        replace("Ș", "Ş");
        replace("Ț", "Ţ");
    }
    if (language == "fa") {
        replace("ی", "ي");
        replace("\u200c", " ");
    }
    replace("\u2011", "-");
    return line;
}

// Comma and cedilla below are the same bytes in ISO 8859-16 and -2.
std::string WithCedilla(const std::string& text) {
    return Adapt(text, "ro");
}

bool IsRight(const std::string& guess, const Slice& slice) {
    const Converter& decode = Between("UTF-8", IconvName(guess));
    const auto text = decode.Run(slice.bytes);
    return text && (*text == slice.text || WithCedilla(*text) == WithCedilla(slice.text));
}

struct Results {
    std::map<std::string, Count> byKey;  // "detector size group"
    struct Time {
        double seconds = 0;
        std::size_t texts = 0;
    };
    std::map<std::string, Time> times;  // "detector size"
    void Add(const std::string& key, bool right, bool inThree) {
        Count& count = byKey[key];
        ++count.all;
        count.right += right;
        count.inThree += inThree;
    }
};

void Measure(const std::string& language, const std::string& encoding, const std::string& group,
             const std::vector<std::string>& lines, int slices, Results* results) {
    const Converter& encode = Between(encoding, "UTF-8");
    std::string joined;
    for (const std::string& line : lines) {
        const std::string text = Adapt(line, encoding == "ISO-8859-16" ? "" : language);
        // The library has the characters of Big5 in EUC-TW.
        const bool lacks = encoding == "EUC-TW" && !Between("BIG5", "UTF-8").Run(text);
        if (!lacks && encode.Run(text)) joined += text + "\n";
    }
    const Characters characters = Split(joined);
    if (characters.size() < 2000) {
        std::printf("%s in %s: only %zu characters\n", language.c_str(), encoding.c_str(),
                    characters.size());
        if (characters.size() < 100) return;
    }
    for (const std::size_t size : kSizes) {
        std::mt19937 chosen(static_cast<unsigned>(size));
        int made = 0;
        for (int tries = 0; made < slices && tries < slices * 40; ++tries) {
            const std::size_t at = chosen() % characters.size();
            const auto slice = SliceAt(characters, at, size, encode);
            if (!slice) continue;
            ++made;
            for (const Detector& detector : kDetectors) {
                const std::string key = std::string(detector.name) + " " + std::to_string(size);
                double least = 1;  // of three, as other programs may interrupt one
                Guesses guesses;
                for (int i = 0; i < 3; ++i) {
                    const auto start = std::chrono::steady_clock::now();
                    guesses = detector.detect(slice->bytes);
                    const std::chrono::duration<double> passed =
                        std::chrono::steady_clock::now() - start;
                    least = std::min(least, passed.count());
                }
                Results::Time& time = results->times[key + " " + group];
                time.seconds += least;
                ++time.texts;
                bool right = false, inThree = false;
                for (std::size_t i = 0; i < guesses.size() && i < 3; ++i) {
                    const bool is = IsRight(guesses[i], *slice);
                    right |= i == 0 && is;
                    inThree |= is;
                }
                results->Add(key + " " + group, right, inThree);
                results->Add(key + " " + group + " " + language, right, inThree);
                results->Add(key + " " + group + " " + encoding, right, inThree);
                if (std::getenv("SHOW") && !right && detector.detect == Ours &&
                    std::getenv("SHOW") == language + "/" + encoding + "/" + std::to_string(size))
                    std::printf("%s: %s\n", guesses.empty() ? "-" : guesses[0].c_str(),
                                slice->text.c_str());
            }
        }
    }
}

std::vector<std::string> SplitWords(const char* words) {
    std::vector<std::string> list(1);
    for (; *words; ++words) {
        if (*words == ' ')
            list.emplace_back();
        else
            list.back() += *words;
    }
    return list;
}

void Print(const Results& results, const std::string& group) {
    for (const Detector& detector : kDetectors) {
        std::printf("%-9s %-8s", detector.name, group.c_str());
        for (const std::size_t size : kSizes) {
            const auto found = results.byKey.find(std::string(detector.name) + " " +
                                                  std::to_string(size) + " " + group);
            if (found == results.byKey.end()) continue;
            const Count& count = found->second;
            std::printf("  %5.2f (%5.2f)", count.Share(count.right), count.Share(count.inThree));
        }
        std::printf("\n");
        if (group.find(' ') != std::string::npos) break;  // of languages, only our own
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fprintf(stderr, "detect_accuracy FOLDER [SLICES]\n"), 2;
    const int slices = argc > 2 ? std::atoi(argv[2]) : 100;
    Results results;
    std::set<std::string> languages, encodings;
    for (const Row& row : kRows) {
        for (const std::string& language : SplitWords(row.languages)) {
            std::ifstream file(std::string(argv[1]) + "/" + language + ".txt");
            std::vector<std::string> lines;
            for (std::string line; std::getline(file, line);) lines.push_back(line);
            for (const std::string& encoding : SplitWords(row.encodings)) {
                Measure(language, encoding, "legacy", lines, slices, &results);
                encodings.insert(encoding);
            }
            if (languages.insert(language).second)
                for (const char* encoding : kUnicode)
                    Measure(language, encoding, "unicode", lines, slices, &results);
        }
    }
    std::printf("right with the first guess (among three), slices of 20, 50, 200 and 2000 bytes\n");
    Print(results, "legacy");
    Print(results, "unicode");
    for (const auto& [name, time] : results.times)
        std::printf("%s: %.1f us\n", name.c_str(),
                    time.seconds / static_cast<double>(time.texts) * 1e6);
    for (const std::string& name : languages) Print(results, "legacy " + name);
    for (const std::string& name : encodings) Print(results, "legacy " + name);
    for (const char* name : kUnicode) Print(results, std::string("unicode ") + name);
    for (const std::string& name : languages) Print(results, "unicode " + name);
}
