// Settings in initialisation files and in the registry.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "mbutil.h"
#include "osconfig.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/temporary_file.h"
#include "tests/support/worker.h"

namespace {

constexpr char kBase[] = "Software\\genutil test";

std::string Get(const TemporaryFile& file, const char* section, const char* key,
                const char* fallback = "none") {
    CGNString value;
    EXPECT_EQ(OSGetConfig(value, fallback, section, key, file.Path()), 1);
    return std::string(value, value.GetLength());
}

CGNString CutAtZero() {
    CGNString text;
    text.CopyNBytes("a\0b", 3);
    return text;
}

TEST(Config, FindsValuesInAnyCase) {
    const TemporaryFile file(
        "\xEF\xBB\xBF[First]\r\nKey = value \r\n;Key2=1\r\nQuoted=\"  x \"\r\n"
        "[ Second ]\r\nkey=\r\nText='it''s'\r\n[first]\r\nlater=1\r\n");
    static const struct {
        int line;
        const char *section, *key, *fallback, *value;
    } kRows[] = {
        {__LINE__, "FIRST", "kEY", "", "value"},      {__LINE__, "first", "key2", "none  ", "none"},
        {__LINE__, "first", "quoted", "", "  x "},    {__LINE__, "second", "KEY", "none", ""},
        {__LINE__, "second", "text", "", "it''s"},    {__LINE__, "third", "key", " x", " x"},
        {__LINE__, "first", "later", "none", "none"},
    };
    // From the file, and once it is old enough from the cache.
    std::this_thread::sleep_for(std::chrono::milliseconds(80));
    for (int round = 0; round < 3; ++round)
        for (const auto& row : kRows)
            EXPECT_EQ(Get(file, row.section, row.key, row.fallback), row.value) << row.line;
}

TEST(Config, ReadsAndWritesIntegers) {
    const TemporaryFile file("[n]\na=12abc\nb=-5\nc=text\nd=99999999999\ne= +7\n");
    static const struct {
        int line;
        const char* key;
        long value;
    } kRows[] = {{__LINE__, "a", 12},          {__LINE__, "b", -5}, {__LINE__, "c", 0},
                 {__LINE__, "d", 2147483647L}, {__LINE__, "e", 7},  {__LINE__, "missing", -42}};
    for (const auto& row : kRows) {
        long value = 1;
        EXPECT_EQ(OSGetConfig(value, -42, "n", row.key, file.Path()), 1) << row.line;
        EXPECT_EQ(value, row.value) << row.line;
    }
    const int written = -2147483647 - 1;
    EXPECT_EQ(OSSetConfig(written, "n", "a", file.Path()), 1);
    EXPECT_EQ(Get(file, "n", "a"), "-2147483648");
}

TEST(Config, ChangesKeepTheRestOfTheFile) {
    const TemporaryFile file("; head\r\n[a]\r\nj=1\r\n\r\n[b]\r\n; note\r\nk=2\r\n");
    EXPECT_EQ(OSSetConfig("new", "A", "J", file.Path()), 1);
    EXPECT_EQ(OSSetConfig("x", "a", "added", file.Path()), 1);
    EXPECT_EQ(OSSetConfig("y", "c", "k", file.Path()), 1);
    EXPECT_EQ(OSDeleteKeyConfig("b", "k", file.Path()), 1);
    EXPECT_EQ(OSDeleteKeyConfig("b", "absent", file.Path()), 1);
    EXPECT_EQ(Get(file, "a", "j"), "new");
    EXPECT_EQ(Get(file, "a", "added"), "x");
    EXPECT_EQ(Get(file, "c", "k"), "y");
    EXPECT_EQ(Get(file, "b", "k"), "none");
    const std::string bytes = file.Bytes();
    EXPECT_EQ(bytes.find("; head\r\n[a]\r\n"), 0u);
    EXPECT_NE(bytes.find("; note\r\n"), std::string::npos);
    OSDeleteKeyConfig("a", nullptr, file.Path());
    EXPECT_EQ(Get(file, "a", "j"), "none");
    EXPECT_EQ(Get(file, "c", "k"), "y");
}

TEST(Config, RefusesTextsThatWouldChangeOtherLines) {
    const std::string before = "[a]\r\nk=1\r\n";
    const CodeSetGuard guard(mbShiftJis);
    const TemporaryFile file(before);
    static const struct {
        int line;
        const char *section, *key, *value;
    } kRows[] = {{__LINE__, "a\n[b", "k", "v"},  {__LINE__, "a", "k\rj", "v"},
                 {__LINE__, "a", "k", "v\nj=2"}, {__LINE__, "a", "k=1", "v"},
                 {__LINE__, "a", ";k", "v"},     {__LINE__, "a", "[k]", "v"},
                 {__LINE__, "a", "", "v"},       {__LINE__, "b\x81 ", "k", "v"}};
    for (const auto& row : kRows) {
        EXPECT_EQ(OSSetConfig(row.value, row.section, row.key, file.Path()), 1);
        EXPECT_EQ(file.Bytes(), before) << row.line;
    }
}

TEST(Config, RefusesTextsWithAZeroByte) {
    const TemporaryFile file("[a]\nk=1\n");
    const CGNString cut = CutAtZero();
    EXPECT_EQ(OSSetConfig(cut, "a", "k", file.Path()), 1);
    EXPECT_EQ(OSSetConfig("v", cut, "k", file.Path()), 1);
    EXPECT_EQ(OSDeleteKeyConfig(cut, nullptr, file.Path()), 1);
    EXPECT_EQ(file.Bytes(), "[a]\nk=1\n");
    EXPECT_EQ(OSSetSystemConfigReg(cut, "zero", "v", kBase), 0);
    EXPECT_EQ(OSSetSystemConfigReg("v", cut, "v", kBase), 0);
    EXPECT_EQ(OSDelSystemConfigReg("zero", cut, kBase), 0);
}

TEST(Config, WritesIntegersOfAnySize) {
    const TemporaryFile file("[a]\n");
    OSSetConfig(-5000000000LL, "a", "k", file.Path());
    OSSetConfig(4000000000U, "a", "j", file.Path());
    OSSetConfig(0, "a", "i", file.Path());
    EXPECT_EQ(Get(file, "a", "k") + Get(file, "a", "j") + Get(file, "a", "i"),
              "-500000000040000000000");
    CGNString text;
    EXPECT_EQ(OSSetSystemConfigReg(0, "wide", "zero", kBase), 1);
    EXPECT_EQ(OSSetSystemConfigReg(18446744073709551615ULL, "wide", "most", kBase), 1);
    EXPECT_EQ(OSGetSystemConfigReg(text, "", "wide", "zero", kBase), 1);
    EXPECT_STREQ(text, "0");
    EXPECT_EQ(OSGetSystemConfigReg(text, "", "wide", "most", kBase), 1);
    EXPECT_STREQ(text, "18446744073709551615");
}

TEST(Config, CutsLongValuesAfterACharacter) {
    const CodeSetGuard guard(mbShiftJis);
    std::string kanji;
    while (kanji.size() < 100000) kanji += "\x8A\xBF";
    const TemporaryFile file("[a]\nx=" + std::string(5000, 'x') + "\nk=" + kanji + "\nm=y" + kanji +
                             "\nlast=1\n");
    EXPECT_EQ(Get(file, "a", "x").size(), 1023u);
    EXPECT_EQ(Get(file, "a", "k"), kanji.substr(0, 1022));
    EXPECT_EQ(Get(file, "a", "m"), "y" + kanji.substr(0, 1022));
    EXPECT_EQ(Get(file, "a", "last"), "1");
    EXPECT_EQ(Get(file, "a", "none", std::string(3000, 'd').c_str()).size(), 1023u);
    const CodeSetGuard utf8(mbUtf8);
    std::string euro;
    while (euro.size() < 3000) euro += "\xE2\x82\xAC";
    const TemporaryFile wide("[a]\nk=y" + euro + "\n");
    EXPECT_EQ(Get(wide, "a", "k"), "y" + euro.substr(0, 1020));
}

TEST(Config, ThreadsLoseNoWrites) {
    OSSetThreaded();
    constexpr int kThreads = 4, kKeys = 40;
    const TemporaryFile file("[shared]\r\nfirst=1\r\n");
    AtTheSameTime(kThreads, [&file](int thread) {
        for (int i = 0; i < kKeys; ++i) {
            char key[32];
            std::snprintf(key, sizeof key, "key%d.%d", thread, i);
            OSSetConfig(i, "shared", key, file.Path());
            if (Get(file, "shared", "first") != "1") ADD_FAILURE() << "lost meanwhile";
        }
    });
    for (int thread = 0; thread < kThreads; ++thread)
        for (int i = 0; i < kKeys; ++i) {
            char key[32];
            std::snprintf(key, sizeof key, "key%d.%d", thread, i);
            EXPECT_EQ(Get(file, "shared", key), std::to_string(i)) << key;
        }
}

TEST(Config, ReadsAndWritesTheSystemFile) {
    CGNString value;
    EXPECT_EQ(OSSetSystemConfig("one", "genutil test", "Key"), 1);
    EXPECT_EQ(OSGetSystemConfig(value, "none", "GENUTIL test", "key"), 1);
    EXPECT_STREQ(value, "one");
    OSGetSystemConfig(value, "none", "genutil test", "other");
    EXPECT_STREQ(value, "none");
}

TEST(Registry, ReadsAndWritesTextsAndIntegers) {
    CGNString text;
    OSDelSystemConfigReg("", "Size", kBase);
    EXPECT_EQ(OSSetSystemConfigReg("12 units", "", "Size", kBase), 1);
    EXPECT_EQ(OSGetSystemConfigReg(text, "none", "", "SIZE", "software\\GENUTIL test"), 1);
    EXPECT_STREQ(text, "12 units");
    long number = 0;
    EXPECT_EQ(OSGetSystemConfigReg(number, 7, "genutil test", "size", "Software"), 1);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(OSGetSystemConfigReg(number, 7, "absent", "size", kBase), 0);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(OSGetSystemConfigReg(text, "none", "", "absent", kBase), 0);
    EXPECT_STREQ(text, "none");
    int written = -3;
    EXPECT_EQ(OSSetSystemConfigReg(written, "deep\\below", "n", kBase), 1);
    EXPECT_EQ(OSGetSystemConfigReg(text, "", "below", "n", (std::string(kBase) + "\\deep").c_str()),
              1);
    EXPECT_STREQ(text, "-3");
    EXPECT_EQ(OSDelSystemConfigReg("", "sIZE", kBase), 1);
    EXPECT_EQ(OSDelSystemConfigReg("", "size", kBase), 0);
    EXPECT_EQ(OSDelSystemConfigReg("absent", "size", kBase), 0);
}

TEST(Registry, LongValuesAreNotRead) {
    CGNString text;
    for (const std::size_t size : {1023, 1024, 100000}) {
        const std::string value(size, 'v');
        EXPECT_EQ(OSSetSystemConfigReg(value.c_str(), "long", "v", kBase), 1);
        EXPECT_EQ(OSGetSystemConfigReg(text, "none", "long", "v", kBase), size < 1024) << size;
        EXPECT_EQ(std::string(text), size < 1024 ? value : "none");
    }
    const std::string name(4096, 'n');
    EXPECT_EQ(OSSetSystemConfigReg("v", name.c_str(), "v", kBase), 0);
}

std::string Loud(const char* name) {
    return std::string(name) + '!';
}

TEST(Registry, ListsAllValues) {
    static constexpr const char* kNames[] = {"Alpha", "beta", "Gamma"};
    for (const char* name : kNames)
        EXPECT_EQ(OSSetSystemConfigReg(Loud(name).c_str(), "list", name, kBase), 1);
    CGNStringList names(10, 10), values(10, 10);
    EXPECT_EQ(OSGetSystemConfigReg("LIST", names, values, kBase), 0);
    ASSERT_EQ(names.GetCount(), 3);
    ASSERT_EQ(values.GetCount(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_STREQ(*names.GetItem(i), kNames[i]);
        EXPECT_STREQ(*values.GetItem(i), Loud(kNames[i]).c_str());
    }
    EXPECT_EQ(OSGetSystemConfigReg("absent", names, values, kBase), 0);
    EXPECT_EQ(names.GetCount(), 3);
}

TEST(LocaleInfo, ReturnsFactsByType) {
    static const struct {
        int line;
        unsigned long locale, type;
        const char* value;
    } kRows[] = {
        {__LINE__, 0x0409, 0x0E, "."},
        {__LINE__, 0x0407, 0x0F, "."},
        {__LINE__, 0x040C, 0x1F, "dd/MM/yyyy"},
        {__LINE__, 0x0407, 0x21, "1"},
        {__LINE__, 0x0409, 0x2A, "Monday"},
        {__LINE__, 0x0407, 0x43, "Dezember"},
        {__LINE__, 0x0411, 0x29, "\x8C\xDF\x8C\xE3"},
        {__LINE__, 0x0411, 0x01, "0411"},
        {__LINE__, 0x0407, 0x59, "de"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        char text[64] = "";
        const int size = static_cast<int>(std::strlen(row.value)) + 1;
        EXPECT_EQ(OSGetLocaleInfo(row.locale, row.type, nullptr, 0), size);
        EXPECT_EQ(OSGetLocaleInfo(row.locale, row.type, text, size), size);
        EXPECT_STREQ(text, row.value);
        EXPECT_EQ(OSGetLocaleInfo(row.locale, row.type, text, size - 1), 0);
    }
    char text[64];
    EXPECT_EQ(OSGetLocaleInfo(0x0409, 0xFFF, text, sizeof text), 0);
    unsigned char number[4] = {9, 9, 9, 9};
    EXPECT_GT(OSGetLocaleInfo(0x0407, 0x20000021, reinterpret_cast<char*>(number), 4), 0);
    EXPECT_EQ(number[0] + number[1] + number[2] + number[3], 1);
}

}  // namespace
