#include "genutil/locale/locale_facts.h"

#include <atomic>
#include <cstring>
#include <memory>
#include <new>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/locale/best_fit_text.h"
#include "genutil/mbutil/code_set.h"
#include "osutil/platform/locale/locales.h"

namespace genutil {

namespace {

// Texts that belong together. If one of them cannot be written in the code set, all come from the
// fallback: another text of the same locale, or the English texts.
struct Group {
    LocaleText first;
    std::uint8_t count;
    LocaleText fallback;  // kLocaleTexts: the same texts in English
};
constexpr Group kGroups[] = {
    {kDateSeparator, 1, kLocaleTexts},
    {kTimeSeparator, 1, kLocaleTexts},
    {kShortDate, 1, kLocaleTexts},
    {kLongDate, 1, kLocaleTexts},
    {kTimeFormat, 1, kLocaleTexts},
    {kAm, 2, kLocaleTexts},
    {kDecimalSymbol, 1, kLocaleTexts},
    {kGroupSeparator, 1, kLocaleTexts},
    {kGrouping, 1, kLocaleTexts},
    {kNegativeSign, 1, kLocaleTexts},
    {kMonthName, 26, kLocaleTexts},
    {kDayName, 14, kLocaleTexts},
    {kEnglishLanguage, 1, kLocaleTexts},
    {kEnglishCountry, 1, kLocaleTexts},
    {kNativeLanguage, 1, kEnglishLanguage},
    {kNativeCountry, 1, kEnglishCountry},
    {kIso639, 1, kLocaleTexts},
    {kIso3166, 1, kLocaleTexts},
    {kLanguageAbbreviation, 1, kLocaleTexts},
    {kCurrencyCode, 1, kLocaleTexts},
    {kCurrencySymbol, 1, kCurrencyCode},
};

// The system's record and the texts converted from it; too large for the stack of a small thread.
struct Draft {
    // A character takes two bytes. Its best fit may consist of two characters.
    static constexpr std::size_t kTextSize = platform::LocaleRecord::kUnits * 4;

    platform::LocaleRecord record;
    char text[kLocaleTexts][kTextSize];
    bool known[kLocaleTexts];

    void Convert(const CodePage& page) {
        for (const Group& group : kGroups) ConvertGroup(page, group);
    }

    void ConvertGroup(const CodePage& page, const Group& group) {
        bool converts = true;
        for (unsigned i = 0; i < group.count; ++i) {
            const unsigned which = group.first + i;
            known[which] = record.Knows(static_cast<LocaleText>(which));
            if (known[which] && ToNearestText(page, record.text[which], text[which], kTextSize) < 0)
                converts = false;
        }
        if (converts) return;
        for (unsigned i = 0; i < group.count; ++i) {
            const unsigned which = group.first + i;
            std::strcpy(text[which], group.fallback == kLocaleTexts ? EnglishFacts().text[which]
                                                                    : text[group.fallback]);
            known[which] = true;
        }
    }
};

// Allocates facts and their texts in a single block.
LocaleFacts* MakeFacts(const Draft& draft, std::uint32_t language, int codeSet) {
    std::size_t size = sizeof(LocaleFacts);
    for (unsigned i = 0; i < kLocaleTexts; ++i)
        if (draft.known[i]) size += std::strlen(draft.text[i]) + 1;
    void* memory = Allocate(size);
    if (!memory) return nullptr;
    LocaleFacts* facts = new (memory) LocaleFacts{};
    facts->language = language;
    facts->codeSet = codeSet;
    facts->languageClass = LanguageOf(language);
    char* at = static_cast<char*>(memory) + sizeof(LocaleFacts);
    for (unsigned i = 0; i < kLocaleTexts; ++i) {
        if (!draft.known[i]) continue;
        const std::size_t length = std::strlen(draft.text[i]) + 1;
        facts->text[i] = static_cast<char*>(std::memcpy(at, draft.text[i], length));
        at += length;
    }
    std::memcpy(facts->number, draft.record.number, sizeof facts->number);
    return facts;
}

// Returns null if the system does not know the language or if allocation fails.
LocaleFacts* ReadFacts(std::uint32_t language, int codeSet) {
    if (language == 0) return nullptr;
    const CodePage* page = FindCodePage(codeSet);
    Draft* draft = page ? New<Draft>() : nullptr;
    const std::unique_ptr<Draft> owner(draft);
    if (!AssertAllocation(draft != nullptr, "genutil/locale_facts", __LINE__)) return nullptr;
    const LocaleRow* row = FindLocaleByLanguage(language);
    if (!platform::ReadLocaleFacts(language, row ? row->name : nullptr, &draft->record))
        return nullptr;
    draft->Convert(*page);
    LocaleFacts* facts = MakeFacts(*draft, language, codeSet);
    AssertAllocation(facts != nullptr, "genutil/locale_facts", __LINE__);
    return facts;
}

bool SameFacts(const LocaleFacts& a, const LocaleFacts& b) {
    for (unsigned i = 0; i < kLocaleTexts; ++i) {
        if (!a.text[i] != !b.text[i]) return false;
        if (a.text[i] && std::strcmp(a.text[i], b.text[i]) != 0) return false;
    }
    return std::memcmp(a.number, b.number, sizeof a.number) == 0;
}

// Facts by language and code set, in an open-addressing hash table without removal. It has room for
// several times the languages of any system.
constexpr std::size_t kSlots = 2048;
using Slot = std::atomic<const LocaleFacts*>;
Slot g_facts[kSlots];

// The state of the system's settings, plus 1, for which the facts of a slot were last verified.
std::atomic<std::uint32_t> g_checked[kSlots];

// Returns the slot of the facts, or a free one for them, or null if all are taken.
Slot* FindSlot(std::uint32_t language, int codeSet) {
    const std::uint32_t hash = (language * 31 + static_cast<std::uint32_t>(codeSet)) * 2654435761u;
    for (std::size_t i = 0; i < kSlots; ++i) {
        Slot& slot = g_facts[((hash >> 16) + i) % kSlots];
        const LocaleFacts* facts = slot.load(std::memory_order_acquire);
        if (!facts || (facts->language == language && facts->codeSet == codeSet)) return &slot;
    }
    return nullptr;
}

// Puts new facts in place of `expected`, or returns those that another thread put there meanwhile.
// Returns null if the slot was taken by another language.
const LocaleFacts* Publish(Slot& slot, const LocaleFacts* expected, LocaleFacts* facts) {
    facts->replaced = expected;
    if (slot.compare_exchange_strong(expected, facts, std::memory_order_acq_rel)) return facts;
    const bool same = expected->language == facts->language && expected->codeSet == facts->codeSet;
    if (!same) return nullptr;
    Release(facts);
    return expected;
}

// Returns Western for a code set without tables of codes, in which no language is written here.
int WritableCodeSet(int codeSet) {
    const CodePage* page = FindCodePage(codeSet);
    const bool hasCodes =
        page && (page->form == CodeForm::kSingleByte || page->form == CodeForm::kPairs);
    return hasCodes ? codeSet : static_cast<int>(mbWestern);
}

}  // namespace

std::uint32_t LanguageOfLocaleId(std::uint32_t localeId) {
    constexpr std::uint32_t kLanguageMask = 0xFFFF, kDefaultCountry = 0x400;
    std::uint32_t language = localeId & kLanguageMask;
    if (language == kUserLocaleId || language == kSystemLocaleId) language = UserLanguage();
    if (language >> 10 == 0 && language != 0) language |= kDefaultCountry;
    return language;
}

const LocaleFacts* FindLocaleFacts(std::uint32_t language, int codeSet) {
    codeSet = WritableCodeSet(codeSet);
    Slot* slot = FindSlot(language, codeSet);
    const LocaleFacts* known = slot ? slot->load(std::memory_order_acquire) : nullptr;
    if (known || !slot) return known;
    LocaleFacts* facts = ReadFacts(language, codeSet);
    while (facts) {
        if (const LocaleFacts* published = Publish(*slot, nullptr, facts)) return published;
        slot = FindSlot(language, codeSet);
        if (!slot) return facts;
    }
    return nullptr;
}

const LocaleFacts* RefreshLocaleFacts(std::uint32_t language, int codeSet) {
    codeSet = WritableCodeSet(codeSet);
    Slot* slot = FindSlot(language, codeSet);
    const LocaleFacts* known = slot ? slot->load(std::memory_order_acquire) : nullptr;
    if (!known) return FindLocaleFacts(language, codeSet);
    std::atomic<std::uint32_t>& checked = g_checked[slot - g_facts];
    const std::uint32_t state = platform::LocaleSettingsStamp() + 1;
    if (checked.exchange(state, std::memory_order_relaxed) == state) return known;
    LocaleFacts* facts = ReadFacts(language, codeSet);
    if (!facts) return known;
    if (!SameFacts(*known, *facts)) return Publish(*slot, known, facts);
    Release(facts);
    return known;
}

int CodeSetOfLocaleTexts(std::uint32_t language) {
    if (language == 0) return mbWestern;
    if (FindLocaleByLanguage(language)) return CodeSetOfLanguage(language);
    const unsigned codePage =
        platform::AnsiCodePageOfLanguage(static_cast<std::uint16_t>(language));
    const int codeSet = codePage ? CodeSetOfCodePage(codePage) : -1;
    return codeSet >= 0 ? codeSet : static_cast<int>(mbWestern);
}

namespace {

struct LanguageRow {
    std::uint16_t primary;
    CLCLanguage language;
    const char* name;
};
constexpr LanguageRow kLanguages[] = {
#include "genutil/locale/languages.inc"
};

}  // namespace

CLCLanguage LanguageOf(std::uint32_t language) {
    constexpr std::uint32_t kCroatia = 0x041A, kCroatianOfBosnia = 0x101A;
    const std::uint32_t primary = PrimaryLanguage(language);
    if (primary == 0x1A)
        return language == kCroatia || language == kCroatianOfBosnia ? clcCroatian : clcSerbian;
    for (const LanguageRow& row : kLanguages)
        if (row.primary == primary) return row.language;
    return clcNoLanguage;
}

const char* LanguageName(CLCLanguage language) {
    for (const LanguageRow& row : kLanguages)
        if (row.language == language) return row.name;
    return "";
}

const LocaleFacts& EnglishFacts() {
    static constexpr LocaleFacts kEnglish = {
        0x0409,
        mbWestern,
        clcEnglish,
        {"/", ":", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt", "AM", "PM", ".", ",", "3;0", "-",
         // Twelve months, each list with an empty thirteenth name.
         "January", "February", "March", "April", "May", "June", "July", "August", "September",
         "October", "November", "December", "",  //
         "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec", "",
         "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday",  //
         "Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun",                               //
         "English", "United States", "English", "United States", "en", "US", "ENU", "$", "USD"},
        {0, 0, 1, 0, 0, 0, 0, 0, 1, 1, 2, 1, 6, 2},
        nullptr};
    return kEnglish;
}

}  // namespace genutil
