#include "genutil/date/style_text.h"

#include "genutil/locale/locale_access.h"

using namespace genutil;

namespace {

const CGNString& FormatOfStyle(const CLCLocale& locale, long style) {
    constexpr long kOwn = 3;
    return LocaleAccess::DateFormat(locale, style == kOwn ? locale.LongOrShort() : style);
}

}  // namespace

bool genutil::AppendDate(TextBuilder& out, DateFields& date, unsigned char* yearFirst, long style,
                         CLCLocale* locale) {
    constexpr long kStyles = 4;
    if (!locale) return false;
    if (style < 0 || style >= kStyles) return true;
    static Kept<const Pattern::Elements> patterns[kStyles];
    const Pattern pattern(patterns[style], MarkOf(locale), PatternLetters::kDate,
                          PatternWalk::kCharacters, [&]() -> const CGNString& {
                              locale->InitControlPanelDateSettings();
                              return FormatOfStyle(*locale, style);
                          });
    if (yearFirst) {
        const PatternElement* first = pattern.begin();
        date.yearFirst =
            first != pattern.end() && first->kind == PatternElement::kRun && first->letter == 'y';
        *yearFirst = date.yearFirst;
    }
    return WriteDate(out, pattern, date, *locale);
}

void genutil::AppendTime(TextBuilder& out, const ClockFields& time, CLCLocale* locale) {
    if (!locale) return;
    static Kept<const Pattern::Elements> kept;
    const Pattern pattern(kept, MarkOf(locale), PatternLetters::kTime, PatternWalk::kCharacters,
                          [&]() -> const CGNString& {
                              locale->InitControlPanelTimeSettings();
                              return LocaleAccess::TimeFormat(*locale);
                          });
    WriteTime(out, pattern, time, *locale);
}
