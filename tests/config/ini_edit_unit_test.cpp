// Changes of the text of an ini file.
#include <gtest/gtest.h>

#include <string>

#include "osutil/config/ini_edit.h"
#include "tests/support/code_set_guard.h"

using namespace genutil;

namespace {

// The text after a change: of a value, or the removal of a key or of a section.
std::string Changed(std::string_view text, const char* section, const char* key,
                    const char* value) {
    IniEdit edit;
    const bool changes = !key     ? PlanIniSectionRemoval(text, section, &edit)
                         : !value ? PlanIniKeyRemoval(text, section, key, &edit)
                                  : PlanIniValue(text, section, key, value, &edit);
    if (!changes) return std::string(text);
    std::string result(text.substr(0, edit.begin));
    for (unsigned i = 0; i < edit.count; ++i) result += edit.parts[i];
    return result += text.substr(edit.end);
}

TEST(IniEdit, ChangesOneLineOnly) {
    static const struct {
        int line;
        const char *text, *section, *key, *value, *changed;
    } kRows[] = {
        {__LINE__, "", "a", "k", "v", "[a]\nk=v\n"},
        {__LINE__, "\xEF\xBB\xBF", "a", "k", "v", "\xEF\xBB\xBF[a]\nk=v\n"},
        {__LINE__, "\xEF\xBB\xBF[a]\nk=1", "A", "K", "v", "\xEF\xBB\xBF[a]\nk=v"},
        {__LINE__, ";c\r\n[a]\r\n K = \"1\" \r\nk=2", "a", "k", "v", ";c\r\n[a]\r\n K = v\r\nk=2"},
        {__LINE__, "[a]\nk=\n", "a", "k", "v", "[a]\nk=v\n"},
        {__LINE__, "[a]\nk=v\n", "a", "k", "", "[a]\nk=\n"},
        {__LINE__, "[a]\nj=1\n\n \n[b]\n", "a", " k ", "v", "[a]\nj=1\nk=v\n\n \n[b]\n"},
        {__LINE__, "[a]\r\n\r\n[b]\r\n", "a", "k", "v", "[a]\r\nk=v\r\n\r\n[b]\r\n"},
        {__LINE__, "[a]\n  [b]\nk=1\n", "a", "k", "v", "[a]\nk=v\n  [b]\nk=1\n"},
        {__LINE__, "[a]\r\nj=1", "a", "k", "v", "[a]\r\nj=1\r\nk=v\r\n"},
        {__LINE__, "[a]", "a", "k", "v", "[a]\nk=v\n"},
        {__LINE__, "[a]\nk=1", "b]", "k", "[v]", "[a]\nk=1\n[b]]\nk=[v]\n"},
        {__LINE__, "k=1\n[a]\n;k=2\n[a]\nk=3\n", "a", "k", "v", "k=1\n[a]\n;k=2\nk=v\n[a]\nk=3\n"},
        {__LINE__, "[a]\nk=1\n\x1A", "b", "k", "v", "[a]\nk=1\n[b]\nk=v\n\x1A"},
        {__LINE__, "[a]\nj=1\n\x1A\nk=2", "a", "k", "v", "[a]\nj=1\nk=v\n\x1A\nk=2"},
        {__LINE__, "[a]\nj=1\nk=1\r\nl=1\n", "a", "k", nullptr, "[a]\nj=1\nl=1\n"},
        {__LINE__, "[a]\nk=1\nk=2", "a", "k", nullptr, "[a]\nk=2"},
        {__LINE__, "[a]\nk=1\n", "a", "j", nullptr, "[a]\nk=1\n"},
        {__LINE__, "[a]\nk=1\n", "b", "k", nullptr, "[a]\nk=1\n"},
        {__LINE__, ";c\n[a]\nk=1\n\n[b]\nk=2", "a", nullptr, nullptr, ";c\n[b]\nk=2"},
        {__LINE__, ";c\n [b]\nk=2", "b", nullptr, nullptr, ";c\n"},
        {__LINE__, "\xEF\xBB\xBF[a]", "a", nullptr, nullptr, "\xEF\xBB\xBF"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Changed(row.text, row.section, row.key, row.value), row.changed) << row.line;
    // A symbol whose second byte is "=".
    const CodeSetGuard johab(mbJohab);
    EXPECT_TRUE(IniHolds("a", "\xD9=", "v"));
    EXPECT_FALSE(IniHolds("a", "\xD9=\xD9", "v"));
    EXPECT_EQ(Changed("[a]\n\xD9==1\n", "a", "\xD9=", "v"), "[a]\n\xD9==v\n");
}

}  // namespace
