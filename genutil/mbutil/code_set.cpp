// The current code set: choosing it from the user's locale, and the names of code sets.
#include "genutil/mbutil/code_set.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "genutil/ascii.h"
#include "genutil/mbutil/code_set_info.h"
#include "genutil/mbutil/copy_out.h"
#include "genutil/mbutil/step.h"
#include "osutil/platform/locale/locales.h"

namespace genutil {

CodeSetState g_codeSetState;
std::atomic<const LocaleRow*> g_currentLocaleRow;

const LocaleRow kLocaleTable[] = {
#include "genutil/mbutil/locales.inc"
};

const LocaleRow* FindLocaleByLanguage(unsigned language) {
    for (const LocaleRow* row = kLocaleTable; row->language; ++row)
        if (row->language == language) return row;
    return nullptr;
}

const LocaleRow* FindLocaleByName(const char* name) {
    const std::size_t length = std::strcspn(name, ".@");
    const LocaleRow* reserved = nullptr;
    for (const LocaleRow* row = kLocaleTable; row->language; ++row) {
        if (row->name[0] != name[0] || row->name[1] != name[1])
            continue;  // excludes most rows
                       // quickly
        if (std::strncmp(row->name, name, length) != 0 || row->name[length]) continue;
        // 0x0400 and 0x0800 do not identify a specific locale: "en_US" means the row of 0x0409.
        if (PrimaryLanguage(row->language)) return row;
        if (!reserved) reserved = row;
    }
    return reserved;
}

static unsigned LanguageOf(const platform::UserLocale& user) {
    if (user.language) return user.language;
    const LocaleRow* row = FindLocaleByName(user.name);
    return row ? row->language : 0;
}

unsigned UserLanguage() {
    return LanguageOf(platform::GetUserLocale());
}

unsigned UserDefaultLanguage() {
    return LanguageOf(platform::GetUserDefaultLocale());
}

int CodeSetOfCodePage(unsigned codePage) {
    for (const CodeSetInfo& info : kCodeSets)
        if (info.ansiCodePage && info.ansiCodePage == codePage) return info.codeSet;
    return -1;
}

int CodeSetOfLanguage(unsigned language) {
    constexpr unsigned kDefaultSublanguage = 0x400;
    if (language >> 10 == 0) language |= kDefaultSublanguage;
    const LocaleRow* row = FindLocaleByLanguage(language);
    return row ? row->codeSet : 0;
}

// Not derived from the language, which several locales may share: Croatian is not written in
// Cyrillic.
int UserAnsiCodeSet() {
    const platform::UserLocale user = platform::GetUserLocale();
    if (user.ansiCodePage) return CodeSetOfCodePage(user.ansiCodePage);
    const LocaleRow* row = FindLocaleByName(user.name);
    return row ? row->codeSet : 0;
}

// Row number plus 1 of each code set, 0 for none. A table, because every conversion needs it.
static constexpr auto kRowOfCodeSet = [] {
    std::array<std::uint8_t, mbUtf32Be + 1> rows{};
    std::uint8_t row = 0;
    for (const CodeSetInfo& info : kCodeSets) rows[info.codeSet] = ++row;
    return rows;
}();

const CodeSetInfo* FindCodeSet(int codeSet) {
    const bool inTable = codeSet >= 0 && codeSet < static_cast<int>(kRowOfCodeSet.size());
    const unsigned row = inTable ? kRowOfCodeSet[static_cast<std::size_t>(codeSet)] : 0;
    return row ? &kCodeSets[row - 1] : nullptr;
}

}  // namespace genutil

using namespace genutil;

int InitMbutil() {
    const int previous = g_codeSetState.codeSet;
    if (!g_codeSetState.initialised && platform::HasTimeZoneRegistry())
        g_codeSetState.timeZoneRegistry = 1;
    g_codeSetState.initialised = 1;
    InitMbutilExt(CodeSetOfLanguage(UserLanguage()));
    return previous;
}

int InitMbutilExt(int codeSet) {
    const int previous = g_codeSetState.codeSet;
    const CodeSetInfo* info = FindCodeSet(codeSet);
    g_codeSetState.codeSet = codeSet;
    g_codeSetState.multiByte = info && info->multiByte;
    g_codeSetState.japanese = info && info->japanese;
    g_currentStep = g_codeSetState.initialised ? StepTableOf(codeSet) : nullptr;
    return previous;
}

int mbGetLocaleCodeSet() {
    return g_codeSetState.codeSet;
}

bool mbIsMultiByte() {
    EnsureInitialised();
    return g_codeSetState.multiByte != 0;
}

unsigned char mbIsJapanese() {
    EnsureInitialised();
    return g_codeSetState.japanese;
}

// The number is ignored because programs pass one and rely on getting the current name.
char* SetCodePage(int, char* dst) {
    const CodeSetInfo* info = FindCodeSet(g_codeSetState.codeSet);
    return std::strcpy(dst, info ? info->name : "");
}

namespace {

// Keywords of code-set names. The first row whose keyword occurs anywhere in a name decides, so a
// Johab name ("KSC_5601_92") means 11 and any name with "GB" means 7. Stored names depend on this.
struct Keyword {
    const char* text;
    int codeSet;
};
constexpr Keyword kKeywords[] = {
    {"WESTERN", mbWestern},   {"EUC_H", mbEucTw},       {"EUC_TW", mbEucTw},
    {"EUC_C", mbEucCn},       {"EUC_ZH", mbEucCn},      {"EUC_K", mbEucKr},
    {"EUC", mbEucJp},         {"SJIS", mbShiftJis},     {"SHIFT", mbShiftJis},
    {"932", mbShiftJis},      {"943", mbShiftJis},      {"JIS", mbJis},
    {"GB", mbGb2312},         {"936", mbGb2312},        {"BIG5", mbBig5},
    {"950", mbBig5},          {"C_5601", mbKorean},     {"949", mbKorean},
    {"874", mbWindows874},    {"1250", mbWindows1250},  {"1251", mbWindows1251},
    {"1252", mbWestern},      {"1253", mbWindows1253},  {"1254", mbWindows1254},
    {"1255", mbWindows1255},  {"1256", mbWindows1256},  {"1257", mbWindows1257},
    {"1258", mbWindows1258},  {"8859_10", mb8859_10},   {"8859_15", mb8859_15},
    {"8859_1", mb8859_1},     {"8859_2", mb8859_2},     {"8859_3", mb8859_3},
    {"8859_4", mb8859_4},     {"8859_5", mb8859_5},     {"8859_6", mb8859_6},
    {"8859_7", mb8859_7},     {"8859_8", mb8859_8},     {"8859_9", mb8859_9},
    {"2022_CN", mbIso2022Cn}, {"2022_KR", mbIso2022Kr}, {"2022", mbJis},
    {"UTF_8", mbUtf8},        {"UTF8", mbUtf8},         {"UTF_16", mbUtf16},
    {"UTF16", mbUtf16},       {"UCS_2", mbUtf16},       {"UCS2", mbUtf16},
};

char KeywordForm(char c) {
    return c == '-' ? '_' : AsciiUpper(c);
}

// Returns true if keyword occurs in name, which is compared in upper case with "-" as "_".
bool HasKeyword(const char* name, const char* keyword) {
    for (; *name; ++name) {
        std::size_t i = 0;
        while (keyword[i] && KeywordForm(name[i]) == keyword[i]) ++i;
        if (!keyword[i]) return true;
    }
    return false;
}

// Converter name, MIME character-set name, code set.
struct Charset {
    const char* converter;
    const char* mime;
    int codeSet;
};
constexpr Charset kCharsets[] = {
#include "genutil/mbutil/charsets.inc"
};

// Other names of code sets. The first one of a code set of conversions only is its MIME name.
struct Alias {
    const char* name;
    int codeSet;
};
constexpr Alias kAliases[] = {
    {"gb18030", mbGb18030},     {"iso-8859-11", mb8859_11},  {"tis-620", mb8859_11},
    {"iso-8859-13", mb8859_13}, {"iso-8859-14", mb8859_14},  {"iso-8859-16", mb8859_16},
    {"koi8-r", mbKoi8R},        {"koi8-u", mbKoi8U},         {"ibm437", mbDos437},
    {"cp437", mbDos437},        {"ibm850", mbDos850},        {"cp850", mbDos850},
    {"ibm852", mbDos852},       {"cp852", mbDos852},         {"ibm866", mbDos866},
    {"cp866", mbDos866},        {"utf-16be", mbUtf16Be},     {"utf-32", mbUtf32},
    {"utf-32le", mbUtf32},      {"utf-32be", mbUtf32Be},     {"us-ascii", mbWestern},
    {"ascii", mbWestern},       {"latin1", mb8859_1},        {"latin-1", mb8859_1},
    {"latin2", mb8859_2},       {"latin-2", mb8859_2},       {"latin9", mb8859_15},
    {"latin-9", mb8859_15},     {"windows-31j", mbShiftJis}, {"uhc", mbKorean},
    {"johab", mbJohab},         {"cp1361", mbJohab},         {"gbk", mbGb2312},
};

bool EqualsIgnoringCase(const char* a, const char* b) {
    while (*a && AsciiLower(*a) == AsciiLower(*b)) ++a, ++b;
    return AsciiLower(*a) == AsciiLower(*b);
}

}  // namespace

static int FindCodeSetByKeyword(const char* name) {
    for (const Keyword& keyword : kKeywords)
        if (HasKeyword(name, keyword.text)) return keyword.codeSet;
    return -1;
}

int genutil::FindCodeSetByName(const char* name) {
    for (const Charset& row : kCharsets)
        if (EqualsIgnoringCase(name, row.mime)) return row.codeSet;
    for (const Alias& alias : kAliases)
        if (EqualsIgnoringCase(name, alias.name)) return alias.codeSet;
    return FindCodeSetByKeyword(name);
}

int mbGetCodeSet(const char* name) {
    const int codeSet = name ? FindCodeSetByKeyword(name) : -1;
    return codeSet < 0 ? mbWestern : codeSet;
}

int mbGetCodeSetFromCharset(const char* name) {
    const int codeSet = name && *name ? FindCodeSetByName(name) : -1;
    return codeSet < 0 ? mbWestern : codeSet;
}

void SetCharset(char* dst, int codeSet) {
    *dst = 0;
    for (const Charset& row : kCharsets)
        if (row.codeSet == codeSet) {
            std::strcpy(dst, row.mime);
            return;
        }
    for (const Alias& alias : kAliases)
        if (codeSet >= mbGb18030 && alias.codeSet == codeSet) {
            std::strcpy(dst, alias.name);
            return;
        }
}

char* MapToWindowsCharsetName(char* name) {
    static constexpr struct {
        const char *iso, *windows;
    } kNames[] = {
        {"iso-8859-1", "windows-1252"}, {"iso-8859-15", "windows-1252"},
        {"iso-8859-2", "windows-1250"}, {"iso-8859-4", "windows-1257"},
        {"iso-8859-5", "windows-1251"}, {"iso-8859-6", "windows-1256"},
        {"iso-8859-7", "windows-1253"}, {"iso-8859-8", "windows-1255"},
        {"iso-8859-9", "windows-1254"},
    };
    if (!std::strstr(name, "8859")) return nullptr;
    for (const auto& row : kNames)
        if (!std::strcmp(name, row.iso)) return std::strcpy(name, row.windows);
    return name;
}

unsigned long mbGetLCID(const char* localeName) {
    const bool named = localeName && *localeName;
    const LocaleRow* row = named ? FindLocaleByName(localeName) : g_currentLocaleRow.load();
    if (row) return row->language;
    return named ? 0 : UserLanguage();
}

int mbDefaultCodePageForLocale(char* dst, int size, const char* localeName) {
    int codeSet = mbWestern;
    if (!localeName || !*localeName)
        codeSet = UserAnsiCodeSet();
    else if (const LocaleRow* row = FindLocaleByName(localeName))
        codeSet = row->codeSet;
    char name[32];
    SetCharset(name, codeSet);
    return CopyWhole(dst, size, name);
}
