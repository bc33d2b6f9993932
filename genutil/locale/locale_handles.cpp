// Locales by name: handles, their list, and their names.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "genutil/allocate.h"
#include "genutil/ascii.h"
#include "genutil/assert_allocation.h"
#include "genutil/locale/locale_facts.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/copy_out.h"
#include "genutil/mbutil/display_text.h"
#include "mbutil.h"
#include "osutil/platform/locale/locale_facts.h"
#include "osutil/platform/locale/locales.h"

using namespace genutil;

// A row of the table, and the code set in the name with which it was opened.
struct mbLocaleRecord {
    const LocaleRow* row;
    int codeSet;
    char charset[32];
};

namespace {

std::atomic<mbLocale> g_currentLocale{nullptr};

const LocaleRow* UserRow() {
    const platform::UserLocale user = platform::GetUserLocale();
    const LocaleRow* row = user.language ? FindLocaleByLanguage(user.language) : nullptr;
    if (!row && *user.name) row = FindLocaleByName(user.name);
    return row ? row : FindLocaleByName("en_US");
}

mbLocaleRecord UserRecord() {
    const LocaleRow* row = UserRow();
    return {row, row->codeSet, ""};
}

// Copies a name without its suffix, in the spelling of the table. A truncated name matches no row.
void NormalizeName(char (&out)[24], const char* name) {
    std::size_t n = 0;
    bool behindLanguage = false;
    for (; *name && *name != '.' && *name != '@' && n + 1 < sizeof out; ++name) {
        const char c = *name == '-' ? '_' : *name;
        behindLanguage |= c == '_';
        out[n++] = behindLanguage ? AsciiUpper(c) : AsciiLower(c);
    }
    out[n] = 0;
}

const LocaleRow* FindByIdentifier(const char* name) {
    char* end = nullptr;
    const unsigned long identifier = *name >= '0' && *name <= '9' ? std::strtoul(name, &end, 0) : 0;
    if (!end || *end || (identifier >> 16) != 0) return nullptr;
    return FindLocaleByLanguage(static_cast<unsigned>(identifier));
}

// Returns the row of a language in its usual country.
const LocaleRow* FindByLanguageCode(const char* name) {
    const std::size_t length = std::strcspn(name, "_");
    // Languages whose first row is not the one that the name alone denotes.
    for (const char* usual : {"en_US", "es_ES", "zh_CN"})
        if (length == 2 && !std::memcmp(name, usual, 2)) return FindLocaleByName(usual);
    for (const LocaleRow* row = kLocaleTable; row->language; ++row)
        if (std::strcspn(row->name, "_") == length && !std::memcmp(row->name, name, length))
            return row;
    return nullptr;
}

const LocaleRow* FindRow(const char* name, int kind) {
    if (!name || !*name) return UserRow();
    if (const LocaleRow* row = FindLocaleByName(name)) return row;
    if (kind == mbOpenExact) return nullptr;
    if (const LocaleRow* row = FindByIdentifier(name)) return row;
    char normal[24];
    NormalizeName(normal, name);
    if (const LocaleRow* row = FindLocaleByName(normal)) return row;
    return kind == mbOpenSpelled ? nullptr : FindByLanguageCode(normal);
}

// Reads the text from the first "." to "@", and the code set that it denotes. A "." after "@"
// belongs to the modifier.
void TakeCharset(mbLocaleRecord* record, const char* name) {
    const char* charset = name ? std::strpbrk(name, ".@") : nullptr;
    if (!charset || *charset == '@') return;
    const std::size_t length = std::strcspn(++charset, "@");
    if (length >= sizeof record->charset) return;
    std::memcpy(record->charset, charset, length);
    record->charset[length] = 0;
    const int codeSet = FindCodeSetByName(record->charset);
    if (codeSet >= 0) record->codeSet = codeSet;
}

void Trace(mbLocaleTrace trace, const char* name, const mbLocaleRecord& record) {
    if (!trace) return;
    char line[160];
    if (!name) name = "";
    if (record.row)
        std::snprintf(line, sizeof line, "locale \"%.60s\": %s, identifier 0x%04x, code set %d",
                      name, record.row->name, record.row->language, record.codeSet);
    else
        std::snprintf(line, sizeof line, "locale \"%.60s\": not known", name);
    trace(line);
}

// Copies the text between the first and second, or the second and third "_" of a name.
void CopyPart(char (&out)[24], const char* name, int number) {
    const char* part = name;
    for (; part && number > 0; --number)
        if ((part = std::strchr(part, '_'))) ++part;
    const std::size_t length = part ? std::strcspn(part, "_") : 0;
    std::memcpy(out, part ? part : "", length);
    out[length] = 0;
}

bool IsFirstOfItsName(const LocaleRow* row) {
    for (const LocaleRow* earlier = kLocaleTable; earlier != row; ++earlier)
        if (std::strcmp(earlier->name, row->name) == 0) return false;
    return true;
}

bool IsSelected(const LocaleRow* row, int select) {
    if (select == mbSelectCodeSet) {
        const LocaleRow* named = FindLocaleByName(row->name);
        return named->codeSet == mbGetLocaleCodeSet();
    }
    if (select == mbSelectSystem) return platform::KnowsLocale(row->language, row->name);
    return true;
}

// Returns false if the current code set lacks a letter.
bool WriteNativeName(char* out, int size, const LocaleRow* row) {
    const LocaleFacts* facts = FindLocaleFacts(row->language, row->codeSet);
    if (!facts || !facts->text[kNativeLanguage] || !facts->text[kNativeCountry]) return false;
    char text[160];
    std::snprintf(text, sizeof text, "%s (%s)", facts->text[kNativeLanguage],
                  facts->text[kNativeCountry]);
    mbIsMultiByte();  // determines the current code set
    mbConversion conversion = {};
    mbConvert(text, std::strlen(text), facts->codeSet, out, static_cast<std::size_t>(size),
              mbGetLocaleCodeSet(), &conversion);
    return conversion.lost == 0 && *out != 0;
}

}  // namespace

mbLocale mbOpenLocale(const char* name, int kind, mbLocaleTrace trace) {
    mbLocaleRecord found = {FindRow(name, kind), 0, ""};
    if (found.row) {
        found.codeSet = found.row->codeSet;
        TakeCharset(&found, name);
    }
    Trace(trace, name, found);
    if (!found.row) return nullptr;
    auto* locale = New<mbLocaleRecord>(found);
    AssertAllocation(locale != nullptr, "genutil/mbutil", __LINE__);
    return locale;
}

void mbCloseLocale(mbLocale locale) {
    mbLocale current = locale;
    if (locale && g_currentLocale.compare_exchange_strong(current, nullptr))
        g_currentLocaleRow = nullptr;
    delete locale;
}

mbLocale mbGetCurrentLocale() {
    return g_currentLocale;
}

mbLocale mbSetCurrentLocale(mbLocale locale) {
    g_currentLocaleRow = locale ? locale->row : nullptr;
    return g_currentLocale.exchange(locale);
}

unsigned long mbLocaleLCID(mbLocale locale) {
    return locale ? locale->row->language : UserLanguage();
}

int mbLocaleCodeSet(mbLocale locale) {
    return locale ? locale->codeSet : UserAnsiCodeSet();
}

int mbGetLocalePart(mbLocale locale, int part, char* out, int size) {
    const mbLocaleRecord record = locale ? *locale : UserRecord();
    char text[24] = "";
    switch (part) {
        case mbPartName:
            return CopyWhole(out, size, record.row->name);
        case mbPartCharset:
            return CopyWhole(out, size, record.charset);
        case mbPartLanguage:
        case mbPartCountry:
        case mbPartVariant:
            CopyPart(text, record.row->name, part - mbPartLanguage);
    }
    return CopyWhole(out, size, text);
}

int mbGetNextLocaleEx(char* name, int size, int* cursor1, int* cursor2, int select) {
    mbIsMultiByte();  // determines the current code set
    int next = 0;
    while (next <= *cursor1 && kLocaleTable[next].language) ++next;
    for (const LocaleRow* row = kLocaleTable + next; row->language; ++row) {
        if (!IsFirstOfItsName(row) || !IsSelected(row, select)) continue;
        *cursor1 = static_cast<int>(row - kLocaleTable);
        ++*cursor2;
        CopyWhole(name, size, row->name);
        return static_cast<int>(std::strlen(row->name));
    }
    return 0;
}

int mbDisplayLocale(char* out, int size, const char* name, int style) {
    if (!out || size <= 0) return 0;
    *out = 0;
    const LocaleRow* row = name && *name ? FindLocaleByName(name) : UserRow();
    if (!row) return 0;
    if (style == mbStyleNative && WriteNativeName(out, size, row)) return 1;
    if (style != mbStyleLanguage) return WriteDisplayText(out, size, row->description);
    char language[64];
    std::snprintf(language, sizeof language, "%s", row->description);
    if (char* country = std::strstr(language, " (")) *country = 0;
    return WriteDisplayText(out, size, language);
}
