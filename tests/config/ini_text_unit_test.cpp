// Sections, keys and values of ini files. fuzz/ini_unit_fuzz.cpp compares the ways to find them.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "osutil/config/ini_text.h"
#include "tests/support/code_set_guard.h"

using namespace genutil;

namespace {

using MaybeText = std::optional<std::string>;

MaybeText Value(std::string_view text, std::string_view section, std::string_view key) {
    std::string_view lines, value;
    if (!FindIniSection(text, section, &lines) || !FindIniValue(lines, key, &value)) return {};
    return std::string(value);
}

TEST(IniText, FindsValues) {
    static const struct {
        int line, codeSet;
        const char *text, *section, *key;
        const char* value;  // null: not found
    } kRows[] = {
        {__LINE__, 0, "[a]\nk=v\n", "a", "k", "v"},
        {__LINE__, 0, "[a]\r\nk=v\r\n", "a", "k", "v"},
        {__LINE__, 0, "[a]\nk=v", "a", "k", "v"},
        {__LINE__, 0, " [ A ] \n\t K \t=  v w  \n", "a", "k", "v w"},
        {__LINE__, mbShiftJis, "\xEF\xBB\xBF[a]\nk=v\n", "a", "k", "v"},
        {__LINE__, 0, "[a]\nk=\"v \"\n", "a", "k", "v "},
        {__LINE__, 0, "[a]\nk=' v'\n", "a", "k", " v"},
        {__LINE__, 0, "[a]\nk=\"v'\n", "a", "k", "\"v'"},
        {__LINE__, 0, "[a]\nk=\"\n", "a", "k", "\""},
        {__LINE__, 0, "[a]\nk=\"\"\n", "a", "k", ""},
        {__LINE__, 0, "[a]\nk=\n", "a", "k", ""},
        {__LINE__, 0, "[a]\nk=a=b\n", "a", "k", "a=b"},
        {__LINE__, 0, "[a]\nk\nkk=2\n;k=3\nk=4\nk=5\n", "a", "k", "4"},
        {__LINE__, 0, "k=0\n[b]\nk=1\n[a]\nk=2\n[c]\nk=3\n", "a", "k", "2"},
        {__LINE__, 0, "[a]\n[a]\nk=2\n", "a", "k", nullptr},  // the first of two decides
        {__LINE__, 0, "[a]\nj=1\n[b]\nk=2\n", "a", "k", nullptr},
        {__LINE__, 0, "[a\nk=v\n", "a", "k", "v"},
        {__LINE__, 0,
         "[a]\n\x1A"
         "k=v\n",
         "a", "k", nullptr},
        {__LINE__, 0, "[a]\n\x1A\nk=v\n", "a", "k", nullptr},
        {__LINE__, 0, "[ab]\nk=v\n", "a", "k", nullptr},
        {__LINE__, 0, "[a]", "a", "k", nullptr},
        {__LINE__, 0, "", "", "", nullptr},
        {__LINE__, 0, "[\xC9t\xE9]\nCl\xC9=1\n", "\xE9T\xC9", "cl\xE9", "1"},
        // Katakana whose second bytes are "A" and "a".
        {__LINE__, mbShiftJis, "[\x83\x41]\n\x83\x61=1\n\x83\x41=2\n", "\x83\x41", "\x83\x41", "2"},
        {__LINE__, mbShiftJis, "[\x83\x41]\nk=1\n", "\x83\x61", "k", nullptr},
        // Full-width letters have a case; a second byte may be a bracket.
        {__LINE__, mbShiftJis, "[\x82\x60\x83\x5D]\n\x82\x60=1\n", "\x82\x81\x83\x5D", "\x82\x81",
         "1"},
        {__LINE__, mbShiftJis, "[a\x83\x5D\nk=1\n", "a\x83\x5D", "k", "1"},
        // Symbols whose second byte is "=".
        {__LINE__, mbJohab, "[a]\n\xD9=x=1\n", "a", "\xD9=x", "1"},
        {__LINE__, mbJohab, "[a]\nk\xD9\xD9==2\n", "a", "k\xD9\xD9", "=2"},
        {__LINE__, mbUtf8, "[\xE3\x82\xA2]\nK=1\n", "\xE3\x82\xA2", "k", "1"},
        {__LINE__, mbUtf8, "[\xD0\x9A\xD0\x9B\xD0\xAE\xD0\xA7]\n\xC3\x89=1\n",
         "\xD0\xBA\xD0\xBB\xD1\x8E\xD1\x87", "\xC3\xA9", "1"},
        {__LINE__, mbUtf8, "[a]\n\xC3=1\n\xC3\x89=2\n", "a", "\xC3\xA9", "2"},
        // U+00E9 in the second plane.
        {__LINE__, mbEucJp, "[a]\n\x8F\xAB\xB1=1\n", "a", "\x8F\xAA\xB1", "1"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const CodeSetGuard guard(row.codeSet);

        EXPECT_EQ(Value(row.text, row.section, row.key),
                  row.value ? MaybeText(row.value) : MaybeText());
    }
}

}  // namespace
