// Preference sets.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "ospreferences.h"
#include "tests/support/temporary_file.h"

class QVStatusList {};

namespace {

TEST(Preferences, ReadsAndWritesAFile) {
    const TemporaryFile file("[Screen]\nWidth=80\n");
    OSLocalPreferenceSet local;
    IQVPreferenceSet& set = local;
    CGNString value;
    EXPECT_EQ(set.GetPreferenceValue("width", value, "1", "screen", file.Path()), 1);
    EXPECT_STREQ(value, "80");
    value = "90";
    EXPECT_EQ(set.SetPreferenceValue("Width", value, "Screen", file.Path()), 1);
    EXPECT_EQ(set.GetPreferenceValue("Height", value, "25", "Screen", file.Path()), 1);
    EXPECT_STREQ(value, "25");
    EXPECT_NE(file.Bytes().find("Width=90"), std::string::npos);
    QVStatusList status;
    EXPECT_EQ(set.LoadPreferenceValues(nullptr, status), 1);
    EXPECT_EQ(set.SavePreferenceValues(nullptr, status), 1);
    EXPECT_EQ(set.Reload(nullptr, 1, status), 1);
    EXPECT_EQ(set.GetPreferenceType(), 0);
}

TEST(Preferences, DefaultsOnlyOpensNoFile) {
    OSLocalPreferenceSet defaults(1);
    OSLocalPreferenceSet set;
    set = defaults;  // with its flag
    CGNString value = "x";
    EXPECT_EQ(set.SetPreferenceValue("k", value, "s", "./preferences.none"), 1);
    EXPECT_EQ(set.GetPreferenceSectionValueFromIni("s", value, "./preferences.none"), 1);
    EXPECT_STREQ(value, "x");
    EXPECT_EQ(set.GetPreferenceValue("", value, "default", "s", "./preferences.none"), 1);
    EXPECT_STREQ(value, "default");
    EXPECT_FALSE(std::ifstream("./preferences.none").is_open());
}

TEST(Preferences, ReadsSectionsUnchanged) {
    static const struct {
        int line;
        const char *text, *section, *value;  // null: as it was
    } kRows[] = {
        {__LINE__, "[a]\r\n; c\r\nk = \"1\" \r\n\r\n[b]\r\n", "a", "; c\nk = \"1\" \n"},
        {__LINE__, "[a]\nk=1\n [b]\nj=2\n", "a", "k=1\n [b]\nj=2\n"},
        {__LINE__, "[a]\nk=1", "a", "k=1"},
        {__LINE__, "[a] more\nk=1\n[b]", "a", "k=1"},
        {__LINE__, "[A]\nk=1\n[a]\nk=2\n[c]", "a", "k=2"},
        {__LINE__, " [a]\nk=1\n", "a", nullptr},
        {__LINE__, "[ab]\nk=1\n", "a", nullptr},
        {__LINE__, "[a]\n[b]\nk=1\n[c]\n", "a", "[b]\nk=1"},  // nothing precedes the head
        {__LINE__, "[a]", "a", ""},
        {__LINE__, "\xEF\xBB\xBF[a]\nk=1\n[b]", "a", "k=1"},
    };
    OSLocalPreferenceSet set;
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const TemporaryFile file(row.text);
        CGNString value = "untouched";
        EXPECT_EQ(set.GetPreferenceValue("", value, "default", row.section, file.Path()), 1);
        EXPECT_STREQ(value, row.value ? row.value : "untouched");
    }
    CGNString value = "untouched";
    const TemporaryFile empty;
    EXPECT_EQ(set.GetPreferenceValue("", value, "d", "a", empty.Path()), 0);
    EXPECT_EQ(set.GetPreferenceValue("", value, "d", "a", "./preferences.none"), 0);
    EXPECT_EQ(set.GetPreferenceValue("", value, "d", "a", "."), 0);
    EXPECT_STREQ(value, "untouched");
}

}  // namespace
