// Resource libraries: languages, threads, and texts made of their messages.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "gendate.h"
#include "gentrace.h"
#include "osutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/custom_locale.h"
#include "tests/support/temporary_file.h"
#include "tests/support/worker.h"

namespace fs = std::filesystem;

namespace {

constexpr char kTexts[] = TEST_RESOURCES "texts.dll", kOther[] = TEST_RESOURCES "other.dll";

#if defined(_WIN32) || defined(GENUTIL_STATIC)
constexpr bool kAddressesAreModules = false;
#else
constexpr bool kAddressesAreModules = true;
#endif

bool IsJapaneseUser() {
    const char* user = std::getenv("TEST_LANGUAGE");
    return user && std::string(user) == "ja_JP";
}

// The table as it was before, at the end of the scope.
class TableGuard {
  public:
    TableGuard() : m_before(OSSetResourceHandle(0)) {}
    ~TableGuard() { OSSetResourceHandle(m_before); }

  private:
    GNItem m_before;
};

std::string Load(long id) {
    CGNString text("untouched");
    const int length = OSLoadString(text, id);
    EXPECT_EQ(length, length ? static_cast<int>(text.GetLength()) : 0) << id;
    EXPECT_TRUE(length || text == "untouched") << id;
    return length ? static_cast<const char*>(text) : "none";
}

// Whether a handle is one of a library that is loaded.
bool IsLoaded(GNItem handle) {
    const GNItem before = OSSetResourceHandle(handle);
    const std::string text = Load(1200);
    OSSetResourceHandle(before);
    return text != "none";
}

// A program's folder with resource libraries below it.
class Layout {
  public:
    Layout() : m_root("layout." + std::to_string(++s_count)) {
        std::error_code ignored;
        fs::remove_all(m_root, ignored);  // Windows keeps loaded files
        fs::create_directory(m_root);
        fs::copy_file(kTexts, m_root / "base.dll");
    }
    ~Layout() {
        std::error_code ignored;
        fs::remove_all(m_root, ignored);
    }
    void Add(const char* language, const char* library) const {
        fs::create_directories(m_root / "ResDLLs" / language);
        fs::copy_file(library, m_root / "ResDLLs" / language / "x.dll");
    }
    std::string Base() const { return (m_root / "base.dll").string(); }
    std::string Root() const { return fs::canonical(m_root).string(); }

  private:
    inline static int s_count = 0;
    fs::path m_root;
};

}  // namespace

TEST(Resource, LoadsTextsInTheLanguageOfTheUser) {
    const TableGuard table;
    const CodeSetGuard codeSet(mbUtf8);
    ASSERT_NE(OSAttachLocaleResDLL(kTexts), 0);
    const bool ja = IsJapaneseUser();
    const struct {
        int line;
        long id;
        const char* text;
    } kRows[] = {
        {__LINE__, 0, "the first of all"},
        {__LINE__, 15, "the last of a block"},
        {__LINE__, 16, "the first of a block"},
        {__LINE__, 17, "none"},
        {__LINE__, 1000, ja ? "日本語" : "English"},
        {__LINE__, 1001, "none"},                     // in another language only
        {__LINE__, 1020, "neutral"},                  // before the user's own
        {__LINE__, 1040, "Deutsch"},                  // the first
        {__LINE__, 1060, ja ? "日本語" : "English"},  // of no country
        {__LINE__, 65535, "the last of all"},
        {__LINE__, 65536, "the first of all"},
        {__LINE__, -1, "the last of all"},
        {__LINE__, 30000, "none"},
    };
    for (const auto& row : kRows) EXPECT_EQ(Load(row.id), row.text) << row.line;
}

TEST(Resource, LoadsTextsInTheCurrentCodeSet) {
    const TableGuard table;
    ASSERT_NE(OSAttachLocaleResDLL(kTexts), 0);
    const struct {
        int line, codeSet;
        std::string text;
        std::size_t length;  // of the long one: "x", then characters of 2 or 3 bytes
    } kRows[] = {{__LINE__, mbUtf8, "日本 한국", 2047 - 2046 % 3},
                 {__LINE__, mbShiftJis, "\x93\xfa\x96\x7b ??", 2047},
                 {__LINE__, mbEucJp, "\xc6\xfc\xcb\xdc ??", 2047},
                 {__LINE__, mbWestern, "?? ??", 2047}};
    for (const auto& row : kRows) {
        const CodeSetGuard codeSet(row.codeSet);
        EXPECT_EQ(Load(1202), row.text) << row.line;
        EXPECT_EQ(Load(1203).size(), row.length) << row.line;
    }
}

TEST(Resource, AttachingReplacesTheLastLibrary) {
    const TableGuard table;
    EXPECT_EQ(OSAttachLocaleResDLL(static_cast<const char*>(nullptr)), 0);
    EXPECT_EQ(OSAttachLocaleResDLL("no such library.dll"), 0);
    EXPECT_EQ(OSAttachLocaleResDLL(TEST_RESOURCES), 0);
    const TemporaryFile noLibrary("MZ and no more"), empty;
    EXPECT_EQ(OSAttachLocaleResDLL(noLibrary.Path()), 0);
    EXPECT_EQ(OSAttachLocaleResDLL(empty.Path()), 0);

    const GNItem texts = OSAttachLocaleResDLL(kTexts), other = OSAttachLocaleResDLL(kOther);
    ASSERT_TRUE(texts && other && texts != other);
    EXPECT_EQ(OSAttachLocaleResDLL(kOther), other);  // the same file once more
    EXPECT_EQ(Load(1200), "other");
    EXPECT_EQ(Load(16), "none");  // in a library that is still loaded, but no longer in the table
    EXPECT_TRUE(IsLoaded(texts));
    EXPECT_EQ(OSAttachLocaleResDLL("no such library.dll"), 0);
    EXPECT_EQ(Load(1200), "other");

    OSDetachLocaleResDLL(other);  // in the table once, so it is kept
    OSDetachLocaleResDLL(texts);
    OSDetachLocaleResDLL(0);
    EXPECT_EQ(Load(1200), "other");
    EXPECT_EQ(OSSetResourceHandle(texts), other);
    EXPECT_EQ(Load(1200), "%2 of %1");
    EXPECT_EQ(OSSetResourceHandle(0), texts);
    EXPECT_EQ(Load(1200), "none");
}

TEST(Resource, AttachFailsWithoutAModule) {
    const TableGuard table;
    CGNString path("path");
    EXPECT_EQ(OSAttachLocaleResDLL(16, "x.dll", path, 0), 0);
    EXPECT_EQ(OSAttachLocaleResDLL(0, nullptr, path, 0), 0);
    EXPECT_EQ(OSAttachLocaleResDLL(0, "no such library.dll", path, 0x0411), 0);
    EXPECT_STREQ(path, "path");
}

TEST(Resource, FallsBackToThePrimaryLanguageAndEnglish) {
    const TableGuard table;
    const Layout layout;
    const GNItem base = OSAttachLocaleResDLL(layout.Base().c_str());
    ASSERT_NE(base, 0);
    const char* const user = IsJapaneseUser() ? "0411" : "0409";
    const struct {
        int line;
        const char *add, *library;  // before the call
        unsigned language;
        const char *folder, *text;  // null: none is loaded
    } kRows[] = {
        {__LINE__, "0007", kOther, 0x0c0a, nullptr, nullptr},
        {__LINE__, "0009", kTexts, 0x0c0a, "0c0a", "%2 of %1"},
        {__LINE__, "000a", kOther, 0x0c0a, "0c0a", "other"},
        {__LINE__, "0c0a", kTexts, 0x0c0a, "0c0a", "%2 of %1"},
        {__LINE__, nullptr, nullptr, 0x080a, "080a", "other"},
        {__LINE__, nullptr, nullptr, 0x0c0c, "0c0c", "%2 of %1"},
        {__LINE__, user, kOther, 0, user, "other"},
    };
    for (const auto& row : kRows) {
        if (row.add) layout.Add(row.add, row.library);
        CGNString path("path");
        OSSetResourceHandle(0);
        const GNItem handle = OSAttachLocaleResDLL(base, "x.dll", path, row.language);
        EXPECT_EQ(handle != 0, row.folder != nullptr) << row.line;
        if (!row.folder) {
            EXPECT_STREQ(path, "path") << row.line;
            continue;
        }
        const std::string expected = layout.Root() + "\\ResDLLs\\" + row.folder + "\\x.dll";
        const char* const text = path;
        EXPECT_TRUE(fs::path(text) == fs::path(expected) ||
                    std::string(text).substr(2) == expected.substr(2))
            << row.line << ' ' << text;
        EXPECT_EQ(Load(1200), row.text) << row.line;
    }
}

// The messages are next to a shared library, and on Linux the address of a function identifies it.
// Windows takes module handles only.
TEST(Resource, FindsMessagesBesideTheLibrary) {
    const TableGuard table;
    const CodeSetGuard codeSet(mbUtf8);
    CGNString path;
    const auto module = reinterpret_cast<GNItem>(&OSLoadString);
    const bool found = OSAttachLocaleResDLL(module, "genmsg.dll", path, 0x0c0a) != 0;
    EXPECT_EQ(found, kAddressesAreModules);
    EXPECT_EQ(Load(25048), found ? "a. C." : "none");
}

TEST(Resource, ThreadsHaveLibrariesOfTheirOwn) {
    OSSetThreaded();
    const TableGuard table;
    OSAttachLocaleResDLL(kTexts);
    Worker([] {
        EXPECT_EQ(OSAttachLocaleResDLLTS(nullptr), 0);
        EXPECT_EQ(OSAttachLocaleResDLLTS("no such library.dll"), 0);
        EXPECT_EQ(Load(1200), "%2 of %1");
        EXPECT_NE(OSAttachLocaleResDLLTS(kOther), 0);
        EXPECT_EQ(Load(1200), "other");
        EXPECT_EQ(Load(16), "none");  // the table is not asked
        const GNItem texts = OSAttachLocaleResDLLTS(kTexts);
        EXPECT_EQ(CGNLclSt::Instance()->GetLocalVariable("MsgResourceHandle"),
                  reinterpret_cast<void*>(texts));
        EXPECT_EQ(Load(1200), "%2 of %1");
        EXPECT_EQ(OSAttachLocaleResDLLTS("no such library.dll"), 0);
        EXPECT_EQ(CGNLclSt::Instance()->GetIndex("MsgResourceHandle"), -1);
        OSDetachLocaleResDLLTS();
    }).Join();
    Worker([] {
        CGNLclSt* variables = CGNLclSt::Instance();  // a table without room for it
        int value = 0;
        variables->Init(1);
        variables->SetLocalVariable("full", &value);
        EXPECT_EQ(OSAttachLocaleResDLLTS(kOther), 0);
    }).Join();
    EXPECT_EQ(Load(1200), "%2 of %1");
}

TEST(Resource, LastThreadThatDetachesFreesTheLibrary) {
    OSSetThreaded();
    const TableGuard table;
    const Layout layout;
    layout.Add("0009", kOther);  // files that no other test has loaded
    const std::string shared = layout.Base(), second = layout.Root() + "/ResDLLs/0009/x.dll";
    std::atomic<GNItem> seen{0};
    std::atomic<int> differences{0};
    AtTheSameTime(8, [&](int thread) {
        for (int i = 0; i < 50; ++i) {
            const bool isSecond = (thread + i) % 3 == 0;
            const GNItem handle = OSAttachLocaleResDLLTS((isSecond ? second : shared).c_str());
            differences += handle == 0 || Load(1200) != (isSecond ? "other" : "%2 of %1");
            OSDetachLocaleResDLLTS();
        }
        const GNItem handle = OSAttachLocaleResDLLTS(shared.c_str());
        GNItem none = 0;
        if (!seen.compare_exchange_strong(none, handle)) differences += none != handle;
    });
    EXPECT_EQ(differences, 0);
    EXPECT_TRUE(IsLoaded(seen));  // eight threads have it, and ended without a word
    for (int i = 0; i < 8; ++i) {
        EXPECT_TRUE(IsLoaded(seen)) << i;
        Worker([&] {
            CGNLclSt::Instance()->Init(1);
            CGNLclSt::Instance()->SetLocalVariable("MsgResourceHandle",
                                                   reinterpret_cast<void*>(seen.load()));
            OSDetachLocaleResDLLTS();
        }).Join();
    }
    EXPECT_FALSE(IsLoaded(seen));
}

// -- Texts made of messages -----------------------------------------------------------------------

TEST(Resource, FormatsMessagesInStringsAndTraces) {
    const TableGuard table;
    OSAttachLocaleResDLL(kTexts);
    CGNString s("before");
    EXPECT_TRUE(s.LoadStringResource(1200, "ten", "three"));
    EXPECT_STREQ(s, "three of ten");
    EXPECT_FALSE(s.LoadStringResource(1999));
    EXPECT_TRUE(s.IsEmpty());

    const TemporaryFile file;
    CGNString name(file.Path());
    CGNTrace trace;
    trace.Init();
    trace.DisableDateTime();
    trace.ResetMask(1);
    ASSERT_TRUE(trace.ResetOutput(1, name, 0));
    trace.WriteMsg(nullptr, 1, "module", 1201L, 7, "a file");
    trace.WriteMsg(nullptr, 1, "module", 0);
    trace.WriteMsg(nullptr, 1, "module", 1999, 7);
    std::string lines = file.Bytes();
    std::erase(lines, '\r');
    EXPECT_NE(lines.find("module : 7 bytes in a file\n"), std::string::npos) << lines;
    EXPECT_NE(lines.find("module : the first of all\n"), std::string::npos) << lines;
    EXPECT_EQ(lines.substr(lines.size() - 10), "module : \n") << lines;
}

TEST(Resource, MarksYearsBeforeChristInTheLanguage) {
    const TableGuard table;
    const struct {
        int line, codeSet;
        const char *library, *marker;
    } kRows[] = {
        {__LINE__, mbUtf8, nullptr, "B.C."},
        {__LINE__, mbUtf8, LIBRARY_RESOURCES "0011/genmsg.dll", "紀元前"},
        {__LINE__, mbShiftJis, LIBRARY_RESOURCES "0011/genmsg.dll", "\x8b\x49\x8c\xb3\x91\x4f"},
        {__LINE__, mbUtf8, LIBRARY_RESOURCES "0007/genmsg.dll", "v. Chr."},
        {__LINE__, mbUtf8, LIBRARY_RESOURCES "000c/genmsg.dll", "av. J.-C."},
        {__LINE__, mbUtf8, LIBRARY_RESOURCES "0009/genmsg.dll", "B.C."},
        {__LINE__, mbUtf8, kOther, "B.C."},
        {__LINE__, mbUtf8, LIBRARY_RESOURCES "0012/genmsg.dll", "기원전"},
    };
    for (const auto& row : kRows) {
        const CustomLocale locale(row.codeSet == mbShiftJis ? "ja_JP" : "en_US", "M/d/yyyy",
                                  "M/d/yyyy", "H:mm");
        const CodeSetGuard codeSet(row.codeSet);
        if (row.library)
            EXPECT_NE(OSAttachLocaleResDLL(row.library), 0) << row.line;
        else
            OSSetResourceHandle(0);
        CGNDate caesar(44, 1, 3, 15, 4), read;
        EXPECT_TRUE(caesar.FormatForDisplay(1)) << row.line;
        CGNString text;
        caesar.GetDisplayBuffer(text);
        EXPECT_EQ(static_cast<const char*>(text), "3/15/0044 " + std::string(row.marker))
            << row.line;
        read.FromString(text);
        EXPECT_TRUE(read.GetYearBC()) << row.line;
        EXPECT_EQ(read.GetYear(), 44) << row.line;
    }
}

TEST(Resource, FontsFollowTheLanguage) {
    const struct {
        long language;
        int characterSet;
    } kRows[] = {{0x0419, 204}, {0x0804, 134}, {0x0C04, 136}, {0x0415, 238}, {0x0408, 161},
                 {0x0011, 128}, {0x0412, 129}, {0x041F, 162}, {0x0C0A, 0},   {-1, 0}};
    for (const auto& row : kRows)
        EXPECT_EQ(OSLangIDToFontCharSet(row.language), row.characterSet) << row.language;
}
