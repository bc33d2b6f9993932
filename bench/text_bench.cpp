// Stepping, searching, comparing and validating compared with hand-written code. The text is that
// of the Japanese manual pages, in four double-byte code sets.
#include "bench/text_bench.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "bench/support/pages.h"
#include "bench/support/system.h"
#include "mbutil.h"

namespace {

bool SjisLead(unsigned char c) {
    return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xEF);
}
bool HighLead(unsigned char c) {
    return c >= 0xA1 && c <= 0xFE;
}
bool EucLead(unsigned char c) {
    return HighLead(c) || c == 0x8E;
}
bool KoreanLead(unsigned char c) {
    return c >= 0x81 && c <= 0xFE;
}

const CodeSet kCodeSets[] = {
    {"euc-jp", "EUC-JP", "EUC-JP", mbEucJp, EucLead},
    {"shift-jis", "SHIFT_JIS", "ibm-943_P15A-2003", mbShiftJis, SjisLead},
    {"big5", "BIG5", "windows-950-2000", mbBig5, HighLead},
    {"korean", "CP949", "windows-949-2000", mbKorean, KoreanLead},
};

template <bool (*IsLead)(unsigned char)>
std::size_t HandCount(const char* s) {
    std::size_t count = 0;
    for (; *s; ++count) s += IsLead(static_cast<unsigned char>(*s)) && s[1] ? 2 : 1;
    return count;
}

// Same as above with a call per character, like the library's own interface.
template <bool (*IsLead)(unsigned char)>
[[gnu::noinline]] std::size_t HandLength(const char* s) {
    return IsLead(static_cast<unsigned char>(*s)) && s[1] ? 2 : 1;
}
template <bool (*IsLead)(unsigned char)>
std::size_t HandCountByCall(const char* s) {
    std::size_t count = 0;
    for (; *s; ++count) s += HandLength<IsLead>(s);
    return count;
}

std::size_t HandCountByCall(const Text& text) {
    switch (text.set.number) {
        case mbEucJp:
            return HandCountByCall<EucLead>(text.begin());
        case mbShiftJis:
            return HandCountByCall<SjisLead>(text.begin());
        case mbBig5:
            return HandCountByCall<HighLead>(text.begin());
        default:
            return HandCountByCall<KoreanLead>(text.begin());
    }
}

std::size_t HandCount(const Text& text) {
    switch (text.set.number) {
        case mbEucJp:
            return HandCount<EucLead>(text.begin());
        case mbShiftJis:
            return HandCount<SjisLead>(text.begin());
        case mbBig5:
            return HandCount<HighLead>(text.begin());
        default:
            return HandCount<KoreanLead>(text.begin());
    }
}

// Goes back from a match of bytes to the start of its line, and forward again by characters.
bool StartsCharacter(const Text& text, const char* at) {
    const char* s = at;
    while (s > text.begin() && s[-1] != '\n') --s;
    while (s < at) s += text.set.isLead(static_cast<unsigned char>(*s)) && s[1] ? 2 : 1;
    return s == at;
}

template <class Find>
std::size_t CountMatches(const char* s, std::size_t step, Find find) {
    std::size_t count = 0;
    for (const char* at = s; (at = find(at)) != nullptr; at += step) ++count;
    return count;
}

void Measure(benchmark::State& state, const Text& text, std::size_t (*count)(const Text&)) {
    InitMbutilExt(text.set.number);
    std::size_t seen = 0;
    for (auto _ : state) benchmark::DoNotOptimize(seen = count(text));
    state.counters["seen"] = static_cast<double>(seen);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.bytes.size()));
}

// Words that are frequent in the pages and available in the code set: kana are not part of Big5.
const std::string& Wanted(const Text& text, bool word) {
    static std::string words[4][2];
    std::string& wanted = words[&text.set - kCodeSets][word];
    const bool japanese = text.set.number == mbEucJp || text.set.number == mbShiftJis;
    if (wanted.empty()) {
        const char* utf8 = japanese ? (word ? "する" : "の") : (word ? "設定" : "定");
        wanted = Convert(utf8, mbUtf8, text.set.number);
    }
    return wanted;
}

std::size_t GenutilCount(const Text& t) {
    return mbcharcount(t.begin(), static_cast<unsigned>(t.bytes.size()));
}

std::size_t GenutilStep(const Text& t) {
    std::size_t count = 0;
    for (const char* s = t.begin(); *s; ++count)
        s += mbbytesinchar(reinterpret_cast<const unsigned char*>(s));
    return count;
}

std::size_t GenutilNext(const Text& t) {
    std::size_t count = 1;
    for (unsigned at = 0; (at = mbnextidx(t.begin(), at)) != 0;) ++count;
    return count;
}

std::size_t GenutilBracket(const Text& t) {
    return CountMatches(t.begin(), 1, [](const char* s) { return mbstrchr(s, '['); });
}
std::size_t MemchrBracket(const Text& t) {
    const char* end = t.begin() + t.bytes.size();
    std::size_t count = 0;
    for (const char* s = t.begin();
         (s = static_cast<const char*>(std::memchr(s, '[', static_cast<std::size_t>(end - s))));
         ++s)
        count += StartsCharacter(t, s);
    return count;
}

template <bool IsWord>
std::size_t GenutilWord(const Text& t) {
    const std::string& word = Wanted(t, IsWord);
    return CountMatches(t.begin(), word.size(),
                        [&](const char* s) { return mbstrstr(s, word.c_str()); });
}
template <bool IsWord>
std::size_t BytesWord(const Text& t) {
    const std::string& word = Wanted(t, IsWord);
    const char* end = t.begin() + t.bytes.size();
    std::size_t count = 0;
    for (const char* s = t.begin(); (s = FindBytes(s, static_cast<std::size_t>(end - s), word));) {
        const bool whole = StartsCharacter(t, s);
        count += whole;
        s += whole ? word.size() : 1;
    }
    return count;
}

std::size_t GenutilValidate(const Text& t) {
    unsigned bad = 0;
    return mbvalidatestring(t.begin(), &bad, t.set.number) ? 1 : 0;
}
std::size_t HandValidate(const Text& t) {
    for (const char* s = t.begin(); *s;) {
        const int length = mblenExt(reinterpret_cast<const unsigned char*>(s), 4, t.set.number);
        if (length < 0) return 0;
        s += length;
    }
    return 1;
}

const std::string& Lowered(const Text& text) {
    static std::string lowered[4];
    std::string& copy = lowered[&text.set - kCodeSets];
    if (copy.empty()) {
        copy = text.bytes;
        mbstrtolower(copy.data());
    }
    return copy;
}
std::size_t GenutilCompare(const Text& t) {
    return mbstricmp(t.begin(), Lowered(t).c_str()) == 0;
}
std::size_t HandCompare(const Text& t) {
    const auto lower = [](unsigned char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
    const auto* a = reinterpret_cast<const unsigned char*>(t.begin());
    const auto* b = reinterpret_cast<const unsigned char*>(Lowered(t).c_str());
    while (*a) {
        if (t.set.isLead(*a) && a[1]) {
            if (a[0] != b[0] || a[1] != b[1]) return 0;
            a += 2;
            b += 2;
        } else if (lower(*a++) != lower(*b++)) {
            return 0;
        }
    }
    return 1;
}

void RegisterAll() {
    const std::string back = std::string(kFindBytesName) + "+back";
    const struct {
        const char *name, *who;
        std::size_t (*count)(const Text&);
    } kCases[] = {
        {"count", "genutil", GenutilCount},
        {"count", "hand-loop", HandCount},
        {"step-by-call", "genutil", GenutilStep},
        {"step-by-call", "hand-call", HandCountByCall},
        {"next-by-call", "genutil", GenutilNext},
        {"next-by-call", "hand-call", HandCountByCall},
        {"find-bracket", "genutil", GenutilBracket},
        {"find-bracket", "memchr+back", MemchrBracket},
        {"find-word", "genutil", GenutilWord<true>},
        {"find-word", back.c_str(), BytesWord<true>},
        {"find-frequent-char", "genutil", GenutilWord<false>},
        {"find-frequent-char", back.c_str(), BytesWord<false>},
        {"compare-no-case", "genutil", GenutilCompare},
        {"compare-no-case", "hand-loop", HandCompare},
        {"validate", "genutil", GenutilValidate},
        {"validate", "hand-loop", HandValidate},
    };
    for (const auto& row : kCases) RegisterText(row.name, row.who, row.count);
}

const bool g_registered = (RegisterAll(), true);

}  // namespace

Text::Text(const CodeSet& codeSet) : set(codeSet), bytes(PagesIn(codeSet.iconvName)) {
    mbIsMultiByte();
}

void RegisterText(const char* what, const char* who, std::size_t (*count)(const Text&)) {
    static const std::vector<Text> s_texts(std::begin(kCodeSets), std::end(kCodeSets));
    for (const Text& text : s_texts) {
        const std::string name = std::string(what) + "-" + text.set.name + "/" + who;
        benchmark::RegisterBenchmark(name.c_str(), [&text, count](benchmark::State& state) {
            Measure(state, text, count);
        })->MinTime(0.1);
    }
}
