// Lines of ini files.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "osutil/ini_text.h"

using namespace genutil;

namespace {

std::optional<std::string> Value(std::string_view text, std::string_view section,
                                 std::string_view key) {
    std::string_view lines, value;
    if (!FindIniSection(text, section, &lines) || !FindIniValue(lines, key, &value)) return {};
    return std::string(value);
}

TEST(IniText, SectionsKeysAndValues) {
    static const struct {
        int line;
        const char *text, *section, *key;
        const char* value;  // null: not found
    } kRows[] = {
        {__LINE__, "[a]\nk=v\n", "a", "k", "v"},
        {__LINE__, "[a]\r\nk=v\r\n", "a", "k", "v"},
        {__LINE__, "[a]\nk=v", "a", "k", "v"},
        {__LINE__, " [ A ] \n\t K \t=  v w  \n", "a", "k", "v w"},
        {__LINE__, "\xEF\xBB\xBF[a]\nk=v\n", "a", "k", "v"},
        {__LINE__, "[a]\nk=\"v \"\n", "a", "k", "v "},
        {__LINE__, "[a]\nk=' v'\n", "a", "k", " v"},
        {__LINE__, "[a]\nk=\"v'\n", "a", "k", "\"v'"},
        {__LINE__, "[a]\nk=\"\n", "a", "k", "\""},
        {__LINE__, "[a]\nk=\"\"\n", "a", "k", ""},
        {__LINE__, "[a]\nk=\n", "a", "k", ""},
        {__LINE__, "[a]\nk=a=b\n", "a", "k", "a=b"},
        {__LINE__, "[a]\nk\nkk=2\n;k=3\nk=4\nk=5\n", "a", "k", "4"},
        {__LINE__, "k=0\n[b]\nk=1\n[a]\nk=2\n[c]\nk=3\n", "a", "k", "2"},
        {__LINE__, "[a]\n[a]\nk=2\n", "a", "k", nullptr},  // the first of two decides
        {__LINE__, "[a]\nj=1\n[b]\nk=2\n", "a", "k", nullptr},
        {__LINE__, "[a\nk=v\n", "a", "k", "v"},
        {__LINE__,
         "[a]\n\x1A"
         "k=v\n",
         "a", "k", nullptr},
        {__LINE__, "[a]\n\x1A\nk=v\n", "a", "k", nullptr},
        {__LINE__, "[ab]\nk=v\n", "a", "k", nullptr},
        {__LINE__, "[a]", "a", "k", nullptr},
        {__LINE__, "", "", "", nullptr},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const auto value = Value(row.text, row.section, row.key);
        EXPECT_EQ(value, row.value ? std::optional<std::string>(row.value) : std::nullopt);
    }
}

}  // namespace
