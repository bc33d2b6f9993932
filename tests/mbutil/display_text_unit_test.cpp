// Texts for people in the current code set.
#include <gtest/gtest.h>

#include "genutil/mbutil/display_text.h"
#include "mbutil.h"
#include "tests/support/code_set_guard.h"

TEST(DisplayText, MissingLettersLoseTheirAccents) {
    const struct {
        int line;
        int codeSet;
        const char *utf8, *text;
        int size = 64;
        int written = 1;
    } kRows[] = {
        {__LINE__, mbWestern, "S\xC3\xA3o Tom\xC3\xA9", "S\xE3o Tom\xE9"},
        {__LINE__, mbWestern, "\xC5\xA0 \xC5\x82 \xC4\x80 \xC5\xBE", "\x8A l A \x9E"},
        {__LINE__, mbShiftJis, "\xC3\x80 \xC5\xA0 \xC5\x82 \xC5\xBE", "A S l z"},
        {__LINE__, mbUtf8, "\xC5\x82", "\xC5\x82"},
        {__LINE__, mbUtf8, "\xC5\x82\xC5\x82", "\xC5\x82", 4},
        {__LINE__, mbWestern, "", "", 64, 0},
        {__LINE__, mbWestern, "abc", "", 1, 0},
    };
    for (const auto& row : kRows) {
        const CodeSetGuard guard(row.codeSet);
        char text[64] = "?";
        EXPECT_EQ(genutil::WriteDisplayText(text, row.size, row.utf8), row.written) << row.line;
        EXPECT_STREQ(text, row.text) << row.line;
    }
}
