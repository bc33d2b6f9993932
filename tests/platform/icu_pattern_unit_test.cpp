// Patterns of CLDR in the shape of Windows.
#include <gtest/gtest.h>

#include <string>

#include "osutil/platform/locale/icu_pattern.h"

using namespace genutil::platform;

namespace {

using Unit = std::uint16_t;

const Unit* Units(const char16_t* text) {
    return reinterpret_cast<const Unit*>(text);
}
std::u16string Text(const Unit* units) {
    return reinterpret_cast<const char16_t*>(units);
}

TEST(IcuPattern, TranslatesFieldsAndQuotesLetters) {
    static const struct {
        int line;
        const char16_t *icu, *windows;
    } kRows[] = {
        {__LINE__, u"M/d/yy", u"M/d/yyyy"},
        {__LINE__, u"y/MM/dd", u"yyyy/MM/dd"},
        {__LINE__, u"EEEE, d. MMMM y", u"dddd, d. MMMM yyyy"},
        {__LINE__, u"cccc d. LLL u", u"dddd d. MMM yyyy"},
        {__LINE__, u"EEE, dd MMMMM", u"ddd, dd MMMM"},
        {__LINE__, u"EEEE, d 'de' MMMM 'de' y", u"dddd, d 'de' MMMM 'de' yyyy"},
        {__LINE__, u"y年M月d日", u"yyyy'年'M'月'd'日'"},
        {__LINE__, u"d MMMM y 'г'.", u"d MMMM yyyy 'г.'"},
        {__LINE__, u"y 'm'. MMMM d 'd'., EEEE", u"yyyy 'm.' MMMM d 'd.', dddd"},
        {__LINE__, u"y('e')'ko' MMMM'ren' d('a')", u"yyyy('e)ko' MMMM'ren' d('a')"},
        {__LINE__, u"d 'ta''' MMMM ''y", u"d 'ta''' MMMM ''''yyyy"},
        {__LINE__, u"EEEE\u060C d MMMM", u"dddd\u060C d MMMM"},
        {__LINE__, u"d\u200F/M\u200F/y", u"d/M/yyyy"},
        {__LINE__, u"EEEEที่ d MMMM G y", u"dddd'ที่' d MMMM yyyy"},
        {__LINE__, u"h:mm:ss\u202Fa", u"h:mm:ss tt"},
        {__LINE__, u"Bh:mm:ss", u"tt h:mm:ss"},
        {__LINE__, u"K:mmaaaa", u"h:mm tt"},
        {__LINE__, u"kk.mm.ss zzzz", u"HH.mm.ss "},
        {__LINE__, u"", u""},
    };
    for (const auto& row : kRows) {
        Unit out[80];
        EXPECT_TRUE(WindowsPattern(Units(row.icu), out, 80)) << row.line;
        EXPECT_EQ(Text(out), row.windows) << row.line;
    }
}

TEST(IcuPattern, RefusesFormatsThatDoNotFit) {
    Unit out[11] = {};
    EXPECT_TRUE(WindowsPattern(Units(u"dd/MM/y"), out, 11));
    out[10] = 'x';
    EXPECT_FALSE(WindowsPattern(Units(u"dd/MM/y"), out, 10));
    EXPECT_EQ(Text(out), u"");
    EXPECT_EQ(out[10], 'x');
}

TEST(IcuPattern, FindsSeparatorsAndOrder) {
    static const struct {
        int line;
        const char16_t *pattern, *separator;
        int order;
        bool markerFirst;
    } kRows[] = {
        {__LINE__, u"M/d/yyyy", u"/", 0, false},     {__LINE__, u"d. M. yyyy", u". ", 1, false},
        {__LINE__, u"yyyy-MM-dd", u"-", 2, false},   {__LINE__, u"ddd d.M.yyyy", u".", 1, false},
        {__LINE__, u"dddd, MMMM d", u" ", 0, false}, {__LINE__, u"yyyy'年'M", u"", 2, false},
        {__LINE__, u"d'-'M", u"-", 1, false},        {__LINE__, u"tt h.mm", u".", 0, true},
        {__LINE__, u"yyyy. d. M", u". ", 1, false},  {__LINE__, u"yyyy", u"", 2, false},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        Unit out[8];
        EXPECT_EQ(SeparatorOfPattern(Units(row.pattern), out, 8), *row.separator != 0);
        EXPECT_EQ(Text(out), row.separator);
        EXPECT_EQ(OrderOfPattern(Units(row.pattern)), row.order);
        EXPECT_EQ(MarkerIsFirst(Units(row.pattern)), row.markerFirst);
    }
    EXPECT_EQ(RunInPattern(Units(u"dddd, d 'dd' MMM"), 'd', 2), 1);
    EXPECT_EQ(RunInPattern(Units(u"dd.d.yyyy"), 'd', 2), 2);
}

TEST(IcuPattern, TranslatesNumberPatterns) {
    static const struct {
        int line;
        const char16_t *pattern, *grouping;
        int negative;
    } kRows[] = {
        {__LINE__, u"#,##0.###", u"3;0", 1},     {__LINE__, u"#,##,##0.###", u"3;2;0", 1},
        {__LINE__, u"0.###;(0.###)", u"0;0", 0}, {__LINE__, u"#,###,##0;- #,##0", u"3;0", 2},
        {__LINE__, u"#,##0;#,##0-", u"3;0", 3},  {__LINE__, u"#,##0;#,##0\u00A0-", u"3;0", 4},
    };
    for (const auto& row : kRows) {
        Unit out[8];
        GroupingOfPattern(Units(row.pattern), out);
        EXPECT_EQ(Text(out), row.grouping) << row.line;
        EXPECT_EQ(NegativeFormatOfPattern(Units(row.pattern)), row.negative) << row.line;
    }
    char16_t text[] = u"\u200E\u2212a\u202Fb\u061C";
    PlainText(reinterpret_cast<Unit*>(text), ' ');
    EXPECT_EQ(std::u16string(text), u"-a b");
}

}  // namespace
