// Files and directories: contents, results of failures, and
// that nothing else is removed.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "gendiag.h"
#include "mbutil.h"
#include "osutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/temporary_file.h"

namespace fs = std::filesystem;

namespace {

constexpr bool kPosix = fs::path::preferred_separator == '/';

// A folder of the test's own, below the current one.
class Files : public testing::Test {
  protected:
    Files() {
        fs::remove_all("files_test");
        fs::create_directory("files_test");
    }
    ~Files() override { fs::remove_all("files_test"); }

    static std::string At(const std::string& name) { return "files_test/" + name; }
    static CGNString Path(const std::string& name) { return CGNString(At(name).c_str()); }
    static void Put(const std::string& name, const std::string& bytes = "x") {
        fs::create_directories(fs::path(At(name)).parent_path());
        std::ofstream(At(name), std::ios::binary) << bytes;
    }
    static std::string Get(const std::string& name) { return BytesOf(At(name)); }
    static bool Has(const std::string& name) { return fs::exists(fs::symlink_status(At(name))); }
    // Whether this system makes links.
    static bool Link(const std::string& to, const std::string& name) {
        std::error_code error;
        fs::create_directory_symlink(fs::absolute(At(to)), At(name), error);
        return !error;
    }
    static std::set<std::string> Left(const std::string& folder) {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(At(folder)))
            names.insert(entry.path().filename().string());
        return names;
    }
};

// The buffer of a reader, and its result.
struct Contents {
    template <class Reader>
    explicit Contents(Reader read) : buffer(const_cast<char*>("untouched")) {
        result = read(buffer);
    }
    ~Contents() { std::free(buffer); }
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;
    std::string Bytes() const {
        return buffer ? std::string(buffer, static_cast<std::size_t>(result)) : "(null)";
    }
    char* buffer;
    int result;
};

Contents Binary(const char* path) {
    return Contents([&](char*& b) { return OSGetBinaryFileContents(b, path); });
}

using Names = std::set<std::string>;
Names Sorted(const CGNStringList& list) {
    Names names;
    for (int i = 0; i < list.GetCount(); ++i)
        names.insert(static_cast<const char*>(*list.GetItem(i)));
    return names;
}

std::string Zeroes(const std::string& text) {
    std::string bytes = text;
    for (char& c : bytes)
        if (c == '0') c = 0;
    return bytes;
}

}  // namespace

// -- Whole files ---------------------------------------------------------------------------------

TEST_F(Files, ReadsAllBytes) {
    for (const std::string& bytes :
         {std::string("a"), Zeroes("a0b0"), std::string("\r\n"), std::string(1234567, '\xE9')}) {
        Put("f", bytes);
        const Contents read = Binary(At("f").c_str());
        ASSERT_EQ(read.Bytes(), bytes);
        EXPECT_EQ(read.buffer[bytes.size()], 0);
    }
    Put("text", "a\r\nb\r\r\nc\r");
    const Contents text([](char*& b) { return OSGetFileContents(b, At("text").c_str()); });
    EXPECT_EQ(text.result, 1);
    EXPECT_STREQ(text.buffer, "a\nb\r\nc\r");
}

TEST_F(Files, UnreadableFilesHaveNoContents) {
    Put("empty", "");
    const std::string longName(4096, 'n'), empty = At("empty"), below = At("empty/below");
    for (const char* path : {"", "files_test", "files_test/missing", empty.c_str(), below.c_str(),
                             longName.c_str(), static_cast<const char*>(nullptr)}) {
        const Contents reads[] = {
            Binary(path), Contents([&](char*& b) { return OSGetFileContents(b, path); }),
            Contents([&](char*& b) { return OSGetFileContentsWithFieldOffset(b, path, "M"); })};
        for (const Contents& read : reads) {
            EXPECT_EQ(read.result, 0) << path;
            EXPECT_EQ(read.buffer, nullptr) << path;
        }
        struct _stat status;
        std::error_code error;
        EXPECT_EQ(OSFileStat(path, status) == 0, path && fs::exists(path, error)) << path;
    }
    struct _stat status;
    Put("five", "12345");
    ASSERT_EQ(OSFileStat("files_test\\five", status), 0);
    EXPECT_EQ(status.st_size, 5);
}

TEST_F(Files, ReadsTheLengthFromTheTrailer) {
    const std::string hundred(100, 'p');
    const struct {
        int line;
        std::string payload;
        const char *trailer, *marker;
        int read;  // -1: the whole file
    } kRows[] = {
        {__LINE__, hundred, "DATA:100", "DATA", 100},
        {__LINE__, hundred, "DATA:100", "OTHER", -1},
        {__LINE__, Zeroes(std::string(100, '0')), "DATA:100", "DATA", 100},
        {__LINE__, hundred, "DATA: +42 and so", "DATA", 42},
        {__LINE__, hundred, "DATA:100\r\n", "DATA", 100},
        {__LINE__, hundred, "DATA:108", "DATA", 108},
        {__LINE__, hundred, "DATA:109", "DATA", 0},
        {__LINE__, hundred, "DATA:-1", "DATA", 0},
        {__LINE__, hundred, "DATA:0", "DATA", 0},
        {__LINE__, hundred, "DATA:999999999999", "DATA", 0},
        {__LINE__, hundred, "DATA", "DATA", -1},
        {__LINE__, "abc", "M:3", "M", 3},
        {__LINE__, "a:2c", "M:3", "M", 2},  // the first ":" of the tail, which is all of it
        {__LINE__, hundred + "M:3", "abcdefghijklmnop", "M", -1},  // the marker is outside the tail
        {__LINE__, hundred + "M:3", "abcdefghijklmn", "M", 3},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        Put("f", row.payload);
        const int length = static_cast<int>(std::strlen(row.trailer));
        EXPECT_EQ(OSWriteFieldOffset(At("f").c_str(), row.trailer), length);
        const std::string all = row.payload + row.trailer;
        ASSERT_EQ(Get("f"), all);
        const Contents read([&](char*& b) {
            return OSGetBinaryFileContentsWithFieldOffset(b, At("f").c_str(), row.marker);
        });
        if (row.read == 0)
            EXPECT_EQ(read.buffer, nullptr);
        else
            EXPECT_EQ(read.Bytes(), all.substr(0, static_cast<std::size_t>(row.read)));
    }
    EXPECT_EQ(OSWriteFieldOffset(At("new").c_str(), "M:1"), 0);
    EXPECT_EQ(OSWriteFieldOffset(At("f").c_str(), nullptr), 0);
    EXPECT_FALSE(Has("new"));
    Put("f", "a\r\nb\r\nM:3");
    const Contents text(
        [](char*& b) { return OSGetFileContentsWithFieldOffset(b, At("f").c_str(), "M"); });
    EXPECT_EQ(text.result, 1);
    EXPECT_STREQ(text.buffer, "a\n");
    EXPECT_EQ(Contents([](char*& b) {
                  return OSGetBinaryFileContentsWithFieldOffset(b, At("f").c_str(), nullptr);
              }).result,
              0);
}

TEST_F(Files, WritesAccordingToTheAction) {
    char bytes[] = "new";
    const struct {
        int line;
        const char* before;  // null: no file
        osFileActionIfExists action;
        long result;
        const char* after;
    } kRows[] = {
        {__LINE__, nullptr, osFailIfExists, 3, "new"},
        {__LINE__, nullptr, osOverwriteIfExists, 3, "new"},
        {__LINE__, nullptr, osAppendIfExists, 3, "new"},
        {__LINE__, "before", osFailIfExists, osFileExists, "before"},
        {__LINE__, "before", osOverwriteIfExists, 3, "new"},
        {__LINE__, "before", osAppendIfExists, 3, "beforenew"},
        {__LINE__, "before", static_cast<osFileActionIfExists>(3), 0, "before"},  // no action
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        fs::remove(At("f"));
        if (row.before) Put("f", row.before);
        EXPECT_EQ(OSWriteBinaryFileContents(bytes, 3, Path("f"), row.action), row.result);
        EXPECT_EQ(Get("f"), row.after);
    }
    EXPECT_EQ(OSWriteBinaryFileContents(bytes, 3, Path(""), osFailIfExists), osFileExists);
    for (const auto action : {osFailIfExists, osOverwriteIfExists, osAppendIfExists}) {
        EXPECT_EQ(OSWriteBinaryFileContents(bytes, 3, Path("no/f"), action), 0);
        EXPECT_EQ(OSWriteBinaryFileContents(bytes, 3, CGNString(), action), 0);
        EXPECT_EQ(OSWriteBinaryFileContents(nullptr, 3, Path("null"), action), 0);
    }
    EXPECT_EQ(OSWriteBinaryFileContents(bytes, 3, Path(""), osOverwriteIfExists), 0);
    EXPECT_FALSE(Has("null"));
    if (kPosix) {
        EXPECT_EQ(OSWriteBinaryFileContents(bytes, 3, "/dev/full", osOverwriteIfExists), 0);
        EXPECT_EQ(OSWriteFieldOffset("/dev/full", "M:1"), 0);
    }
}

TEST_F(Files, RemovesReturnsBeforeLineFeeds) {
    const char* const kRows[][2] = {
        {"a\r\nb\rc", "a\nb\rc"}, {"", ""},     {"\r\n", "\n"},  {"\r\r\n", "\r\n"},
        {"\r\n\r\n", "\n\n"},     {"\r", "\r"}, {"\n\r", "\n\r"}};
    for (const auto& row : kRows) {
        std::string text = row[0];
        EXPECT_EQ(OSDosToUnix(text.data()), 1);
        EXPECT_STREQ(text.c_str(), row[1]);
    }
    EXPECT_EQ(OSDosToUnix(nullptr), 0);
}

// -- Making and removing -------------------------------------------------------------------------

TEST_F(Files, ReturnsTheErrorOfMakingAndRemoving) {
    Put("file");
    Put("full/file");
    const std::string name(4096, 'n');
    const struct {
        int line;
        int (*what)(CGNString const&);
        std::string path;
        int code;
    } kRows[] = {
        {__LINE__, OSCreateDirectory, "new", 0},
        {__LINE__, OSCreateDirectory, "new", osFileExists},
        {__LINE__, OSCreateDirectory, "file", osFileExists},
        {__LINE__, OSCreateDirectory, "missing/new", osFileNotFound},
        {__LINE__, OSCreateDirectory, "file/new", osFileNotFound},
        {__LINE__, OSRemoveFile, "new", osFileAccessDenied},
        {__LINE__, OSRemoveDirectory, "new", 0},
        {__LINE__, OSRemoveDirectory, "new", osFileNotFound},
        {__LINE__, OSRemoveDirectory, "full", osDirectoryNotEmpty},
        {__LINE__, OSRemoveDirectory, "file", osFileFailed},
        {__LINE__, OSRemoveFile, "missing", osFileNotFound},
        {__LINE__, OSRemoveFile, "full\\missing", osFileNotFound},
        {__LINE__, OSRemoveDirectoryAndContents, "missing", osFileNotFound},
        {__LINE__, OSRemoveDirectoryAndContents, "file", osFileFailed},
        {__LINE__, OSRemoveFile, "full\\file", 0},
        {__LINE__, OSRemoveDirectory, "full\\", 0},
        {__LINE__, OSDeleteDirectoryTree, "missing", 1},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(row.what(Path(row.path)), row.code) << row.line << ' ' << row.path;
    for (const auto what :
         {OSCreateDirectory, OSRemoveDirectory, OSRemoveFile, OSRemoveDirectoryAndContents}) {
        EXPECT_EQ(what(CGNString()), osFileNotFound);
        EXPECT_EQ(what(Path(name)), osFileNotFound);
    }
    EXPECT_EQ(OSDeleteDirectoryTree(CGNString()), 0);
    EXPECT_EQ(OSDeleteDirectoryTree(Path(name)), 1);
    EXPECT_EQ(Left(""), Names{"file"});
}

TEST_F(Files, RemovesContentsOneLevelDeepAndTreesWhole) {
    for (const char* name : {"d/a", "d/b.c", "d/.hidden"}) Put(name);
    EXPECT_EQ(OSRemoveDirectoryAndContents(Path("d")), 0);
    for (const char* name : {"d/a", "d/sub/b"}) Put(name);
    EXPECT_EQ(OSRemoveDirectoryAndContents(Path("d")), osDirectoryNotEmpty);
    EXPECT_EQ(Left("d"), Names{"sub"});
    EXPECT_TRUE(Has("d/sub/b"));
    std::string path = "d";
    for (int i = 0; i < 64; ++i) Put((path += "/d") + "/f");
    for (const char* name : {"d/locked/f", "d/readonly", "file"}) Put(name);
    for (const char* name : {"d/locked", "d/readonly"})
        fs::permissions(At(name), fs::perms::owner_read);
    EXPECT_EQ(OSDeleteDirectoryTree(Path("d\\")), 0);
    EXPECT_EQ(Left(""), Names{"file"});
    EXPECT_EQ(OSDeleteDirectoryTree(Path("file")), 0);
    EXPECT_EQ(Left(""), Names());
}
// Around the lengths at which Windows wants another form of a path.
TEST_F(Files, ListsAndRemovesLongDirectories) {
    const std::size_t base = fs::absolute(At("")).string().size();
    for (const std::size_t length :
         {244u, 246u, 247u, 248u, 249u, 255u, 258u, 259u, 260u, 261u, 300u, 900u}) {
        CGNString folder(fs::absolute(At("long")).string().c_str());
        EXPECT_EQ(OSCreateDirectory(folder), 0);
        int folders = 1;
        while (folder.GetLength() + 2 <= length) {
            const std::size_t left = length - folder.GetLength() - 1;
            folder += "\\";
            // No rest of a single separator.
            folder += std::string(left > 100 ? 80 : left, 'n').c_str();
            ASSERT_EQ(OSCreateDirectory(folder), 0) << length;
            ++folders;
        }
        CGNString file(folder);
        file += "\\f";
        char byte[] = "x";
        EXPECT_EQ(OSWriteBinaryFileContents(byte, 1, file, osFailIfExists), 1) << length;
        CGNStringList here(10, 10), below(10, 10);
        EXPECT_EQ(OSGetFileList(folder, "*", here, 0, 1), 0) << length;
        EXPECT_EQ(here.GetCount(), 1) << length;
        EXPECT_EQ(OSGetFileList(Path("long"), "f", below, 1, 1), 0) << length;
        EXPECT_EQ(below.GetCount(), 1) << length;
        EXPECT_EQ(OSDeleteDirectoryTree(Path("long")), 0) << length;
        EXPECT_FALSE(Has("long")) << length << ' ' << base;
    }
}

TEST_F(Files, RemovesTreesDeeperThanAnyPath) {
    if (!kPosix) GTEST_SKIP() << "the shell's paths end at 260 characters";
    const fs::path here = fs::current_path();
    fs::create_directory(At("tree"));
    fs::current_path(At("tree"));
    const std::string name(60, 'd');
    for (int i = 0; i < 100; ++i) {
        std::ofstream("f") << i;
        fs::create_directory(name);
        fs::current_path(name);
    }
    fs::current_path(here);
    EXPECT_EQ(OSDeleteDirectoryTree(Path("tree")), 0);
    EXPECT_FALSE(Has("tree"));
}

TEST_F(Files, RemovesLinksNotTheirTargets) {
    Put("kept/file");
    if (!Link("kept", "link")) GTEST_SKIP() << "no links here";
    for (const auto remove :
         {OSRemoveDirectory, OSRemoveFile, OSRemoveDirectoryAndContents, OSDeleteDirectoryTree})
        for (const char* name : {"link", "link\\", "link/."}) {
            // Names of files have no trailing separator.
            if (remove == OSRemoveFile && std::strcmp(name, "link") != 0) continue;
            Link("kept", "link");
            EXPECT_EQ(remove(Path(name)), 0) << name;
            EXPECT_FALSE(Has("link")) << name;
            ASSERT_TRUE(Has("kept/file")) << name;
        }
    for (const auto remove : {OSRemoveDirectoryAndContents, OSDeleteDirectoryTree}) {
        fs::create_directory(At("d"));
        Link("kept", "d/link");
        Link("kept/file", "d/file");
        Link("nowhere", "d/dangling");
        EXPECT_EQ(remove(Path("d")), 0);
        EXPECT_FALSE(Has("d"));
        ASSERT_TRUE(Has("kept/file"));
    }
    fs::create_directory(At("d"));
    Link("kept", "d/link");
    OSRemovePatternFromDirectory(Path("d"),
                                 [](CGNString& name) -> unsigned char { return name == "link"; });
    EXPECT_EQ(Left("d"), Names());
    EXPECT_TRUE(Has("kept/file"));
    Link("kept/file", "toFile");
    EXPECT_EQ(OSRemoveDirectory(Path("toFile")), osFileFailed);
    EXPECT_TRUE(Has("toFile"));
}

TEST_F(Files, RemovesSelectedEntries) {
    static Names asked;
    asked.clear();
    for (const char* name : {"d/keep", "d/drop", "d/dropped/a", "d/dropped/b", "d/drops/sub/c",
                             "d/keeps/drop", "drop"})
        Put(name);
    EXPECT_EQ(OSRemovePatternFromDirectory(Path("d"),
                                           [](CGNString& name) -> unsigned char {
                                               asked.insert(static_cast<const char*>(name));
                                               const unsigned char chosen = name.Find("drop") == 0;
                                               name = "keep";
                                               return chosen;
                                           }),
              0);
    EXPECT_EQ(asked, (Names{".", "..", "keep", "drop", "dropped", "drops", "keeps"}));
    EXPECT_EQ(Left("d"), (Names{"keep", "drops", "keeps"}));
    EXPECT_TRUE(Has("d/drops/sub/c") && Has("d/keeps/drop") && Has("drop"));
    EXPECT_EQ(OSRemovePatternFromDirectory(Path("d"), nullptr), 0);
    EXPECT_EQ(OSRemovePatternFromDirectory(Path("missing"), nullptr), 0);
    // Selecting "." means the files of the directory.
    OSRemovePatternFromDirectory(Path("d"),
                                 [](CGNString& name) -> unsigned char { return name == "."; });
    EXPECT_EQ(Left("d"), (Names{"drops", "keeps"}));
    EXPECT_TRUE(Has("drop"));
}

TEST_F(Files, RemovesFilesByAge) {
    for (const char* name : {"d/old", "d/young", "d/olddir/f"}) Put(name);
    const auto old = fs::file_time_type::clock::now() - std::chrono::seconds(1000);
    fs::last_write_time(At("d/old"), old);
    if (kPosix) fs::last_write_time(At("d/olddir"), old);
    EXPECT_EQ(OSRemoveOldFilesFromDirectory(Path("d"), 1100), 0);
    EXPECT_TRUE(Has("d/old"));
    OSRemoveOldFilesFromDirectory(Path("d"), 900);
    EXPECT_EQ(Left("d"), (Names{"young", "olddir"}));
    OSRemoveOldFilesFromDirectory(Path("d"), -10);
    EXPECT_EQ(Left("d"), Names{"olddir"});
}

// -- Listing and names ---------------------------------------------------------------------------

TEST_F(Files, ListsByPattern) {
    for (const char* name : {"d/a.txt", "d/B.TXT", "d/noext", "d/sub/c.txt", "d/sub/deep/d.txt"})
        Put(name);
    const struct {
        int line;
        const char *folder, *pattern;
        unsigned char recurse, full;
        Names names;
    } kRows[] = {
        {__LINE__, "d", "*.txt", 0, 0, {"a.txt", "B.TXT"}},
        {__LINE__, "d", "*.txt", 1, 0, {"a.txt", "B.TXT", "c.txt", "d.txt"}},
        {__LINE__, "d", "*.*", 0, 0, {"a.txt", "B.TXT", "noext"}},
        {__LINE__, "d", "?.txt", 0, 1, {"files_test/d\\a.txt", "files_test/d\\B.TXT"}},
        {__LINE__, "d\\", "c*", 1, 1, {"files_test/d\\sub\\c.txt"}},
        {__LINE__, "d", "sub/c*", 0, 1, {"files_test/d\\c.txt"}},  // names go to the directory
        {__LINE__, "d", "sub", 0, 0, {}},
        {__LINE__, "d", "", 0, 0, {}},
        {__LINE__, "missing", "*", 1, 1, {}},
    };
    for (const auto& row : kRows) {
        CGNStringList list;
        const int result =
            OSGetFileList(Path(row.folder), row.pattern, list, row.recurse, row.full);
        EXPECT_EQ(Sorted(list), row.names) << row.line;
        EXPECT_EQ(result, std::strcmp(row.folder, "missing") == 0 ? -1 : 0);
    }
    CGNStringList list;
    list.AddItem("before");
    EXPECT_EQ(OSGetFileList(Path("d"), "*", list), 0);
    EXPECT_EQ(Sorted(list),
              (Names{"before", "files_test/d\\.", "files_test/d\\..", "files_test/d\\a.txt",
                     "files_test/d\\B.TXT", "files_test/d\\noext", "files_test/d\\sub"}));
    if (!Link(".", "d/again")) return;
    CGNStringList bounded;
    OSGetFileList(Path("d"), "*.txt", bounded, 1, 0);
    EXPECT_EQ(bounded.GetCount(), 4);
}

TEST_F(Files, SplitsPaths) {
    const char* const kRows[][4] = {{"a.txt", "txt", "a", "a.txt"},
                                    {"dir.d\\file", "d\\file", "dir", "file"},
                                    {"a/b.c.d", "d", "a/b.c", "b.c.d"},
                                    {"end.", "", "end", "end."},
                                    {".rc", "rc", "", ".rc"},
                                    {"none", "", "", "none"},
                                    {"", "", "", ""}};
    for (const auto& row : kRows) {
        std::string path = row[0];
        EXPECT_STREQ(OSGetFileFromPath(path.c_str()), row[3]);
        EXPECT_STREQ(OSGetFileExtension(path.data()), row[1]);
        EXPECT_STREQ(OSGetFileNoExtension(path.data()), row[2]);
        EXPECT_STREQ(path.c_str(), std::strchr(row[0], '.') ? row[2] : row[0]);
    }
    EXPECT_TRUE(OSGetFileExtension(nullptr).IsEmpty());
    EXPECT_TRUE(OSGetFileNoExtension(nullptr).IsEmpty());
}

TEST_F(Files, MakesUnusedReportNames) {
    CGNString folder, first, second, third;
    EXPECT_EQ(OSGetTempDir(folder), 1);
    EXPECT_TRUE(folder.CompareSingleByteAt(static_cast<int>(folder.GetNumChars()) - 1, '\\'));
    const std::string qualifier = "a.b\\/:*?\"<>|" + std::to_string(std::random_device()());
    const std::string name = "Sales(a_b_________" + qualifier.substr(12) + ")";
    const std::string path = static_cast<const char*>(folder) + name;
    ASSERT_TRUE(OSGetReportTempFileName("Sales", qualifier.c_str(), first));
    EXPECT_STREQ(first, path.c_str());
    char byte = 'x';
    ASSERT_EQ(OSWriteBinaryFileContents(&byte, 1, first, osFailIfExists), 1);
    ASSERT_TRUE(OSGetReportTempFileName("Sales", qualifier.c_str(), second));
    EXPECT_STREQ(second, (path + ".001").c_str());
    ASSERT_EQ(OSWriteBinaryFileContents(&byte, 1, second, osFailIfExists), 1);
    ASSERT_TRUE(OSGetReportTempFileName("Sales", qualifier.c_str(), third));
    EXPECT_STREQ(third, (path + ".002").c_str());
    for (const CGNString& made : {first, second}) EXPECT_EQ(OSRemoveFile(made), 0);
    ASSERT_TRUE(OSGetReportTempFileName(nullptr, std::string(300, 'q').c_str(), first));
    EXPECT_EQ(first.GetNumChars(), 256U);

    // In the form of this system, 200 kanji have 600 bytes.
    if (!kPosix) return;
    const CodeSetGuard japanese(mbShiftJis);
    std::string kanji = std::to_string(std::random_device()());
    for (int i = 0; i < 200; ++i) kanji += "\x8A\xBF";
    for (const char* ending : {"", ".001"}) {
        ASSERT_TRUE(OSGetReportTempFileName(kanji.c_str(), "", first));
        EXPECT_NE(first.Find("\x8A\xBF"), -1);
        EXPECT_EQ(first.Find(".001") >= 0, *ending != 0) << first;
        EXPECT_EQ(OSWriteBinaryFileContents(&byte, 1, first, osFailIfExists), 1) << first;
    }
    EXPECT_EQ(OSRemoveFile(first), 0);
    first.Truncate(first.GetLengthInChars() - 4);
    EXPECT_EQ(OSRemoveFile(first), 0);
}

TEST_F(Files, FindsNoUniversalNames) {
    for (const char* path : {"q:\\dir", "Q:\\dir", "Qx\\dir", "1:\\dir", "", "Q", "\\\\s\\d"}) {
        CGNString result("before"), drive(path);
        EXPECT_FALSE(OSGetUniversalName(result, drive)) << path;
        EXPECT_STREQ(result, "before");
    }
}

// -- Changes of whole files ----------------------------------------------------------------------

TEST_F(Files, ReplacesContentsAtOnce) {
    for (const char* bytes : {"first", "second text", "", "last"}) {
        EXPECT_EQ(OSReplaceFileContents(Path("f"), bytes, std::strlen(bytes)), 0);
        EXPECT_EQ(Get("f"), bytes);
    }
    EXPECT_EQ(Left(""), (Names{"f"}));
    fs::create_hard_link(At("f"), At("other"));
    EXPECT_EQ(OSReplaceFileContents(Path("f"), "new", 3), 0);
    EXPECT_EQ(Get("f"), "new");
    EXPECT_EQ(OSReplaceFileContents(Path("no/f"), "x", 1), osFileNotFound);
    EXPECT_LT(OSReplaceFileContents(Path(""), "x", 1), 0);
    EXPECT_EQ(OSReplaceFileContents(Path("f"), nullptr, 1), osFileFailed);
    EXPECT_EQ(OSReplaceFileContents(CGNString(), "x", 1), osFileNotFound);
    EXPECT_EQ(Get("f"), "new");
    fs::permissions(At("f"), fs::perms::owner_read);
    const int result = OSReplaceFileContents(Path("f"), "x", 1);
    EXPECT_TRUE(result == osFileAccessDenied || Get("f") == "x");  // the superuser may
    fs::permissions(At("f"), fs::perms::owner_all);
}

TEST_F(Files, CopiesAndMoves) {
    const std::string bytes = Zeroes("text0with0zeroes");
    Put("f", bytes);
    Put("there", "old");
    Put("d/inner");
    EXPECT_EQ(OSCopyFile(Path("f"), Path("copy"), osFailIfExists), 0);
    EXPECT_EQ(Get("copy"), bytes);
    EXPECT_EQ(OSCopyFile(Path("f"), Path("there"), osFailIfExists), osFileExists);
    EXPECT_EQ(OSMoveFile(Path("f"), Path("there"), osFailIfExists), osFileExists);
    EXPECT_EQ(Get("there"), "old");
    EXPECT_EQ(OSCopyFile(Path("f"), Path("there"), osOverwriteIfExists), 0);
    EXPECT_EQ(Get("there"), bytes);
    EXPECT_EQ(OSCopyFile(Path("f"), Path("f"), osOverwriteIfExists), osFileAccessDenied);
    EXPECT_EQ(OSCopyFile(Path("d"), Path("e"), osFailIfExists), osFileAccessDenied);
    EXPECT_EQ(OSCopyFile(Path("none"), Path("e"), osFailIfExists), osFileNotFound);
    EXPECT_EQ(OSCopyFile(Path("f"), Path("no/e"), osFailIfExists), osFileNotFound);
    EXPECT_EQ(OSCopyFile(Path("f"), Path("e"), osAppendIfExists), osFileFailed);
    EXPECT_EQ(OSMoveFile(Path("f"), Path("there"), osOverwriteIfExists), 0);
    EXPECT_EQ(OSMoveFile(Path("d"), Path("e"), osFailIfExists), 0);
    EXPECT_EQ(OSMoveFile(Path("none"), Path("x"), osFailIfExists), osFileNotFound);
    EXPECT_EQ(Left(""), (Names{"copy", "there", "e"}));
    EXPECT_TRUE(Has("e/inner"));
    if (!kPosix) return;
    // Another file system.
    const std::string far =
        (fs::exists("/dev/shm") ? "/dev/shm/genutil_moved" : "/tmp/genutil_moved") +
        std::to_string(std::random_device()());
    fs::permissions(At("there"), fs::perms(0640));
    EXPECT_EQ(OSMoveFile(Path("there"), far.c_str(), osOverwriteIfExists), 0);
    EXPECT_EQ(BytesOf(far), bytes);
    EXPECT_EQ(fs::status(far).permissions(), fs::perms(0640));
    EXPECT_FALSE(Has("there"));
    EXPECT_EQ(OSCopyFile("/proc/self/status", Path("proc"), osFailIfExists), 0);
    EXPECT_NE(Get("proc").find("Pid:"), std::string::npos);
    fs::remove(far);
}

TEST_F(Files, MakesDirectoriesAndTemporaryFiles) {
    EXPECT_EQ(OSCreateDirectories(Path("a/b\\c")), 0);
    EXPECT_EQ(OSCreateDirectories(Path("a/b/c/")), 0);
    EXPECT_TRUE(fs::is_directory(At("a/b/c")));
    Put("f");
    EXPECT_EQ(OSCreateDirectories(Path("f")), osFileExists);
    EXPECT_NE(OSCreateDirectories(Path("f/g/h")), 0);
    EXPECT_EQ(OSCreateDirectories(CGNString()), osFileNotFound);
    CGNString first, second, none("before");
    EXPECT_EQ(OSCreateTempFile(Path("a"), "report", first), 0);
    EXPECT_EQ(OSCreateTempFile(Path("a"), "report", second), 0);
    EXPECT_NE(first, second);
    EXPECT_NE(first.Find("report"), -1);
    EXPECT_EQ(Left("a").size(), 3u);
    struct _stat status;
    EXPECT_EQ(OSFileStat(second, status), 0);
    EXPECT_TRUE(!kPosix || (status.st_mode & 0777) == 0600);
    EXPECT_EQ(OSCreateTempFile(Path("no"), "", none), osFileNotFound);
    EXPECT_TRUE(none.IsEmpty());
    ASSERT_EQ(OSCreateTempFile("", "", first), 0);
    EXPECT_EQ(OSRemoveFile(first), 0);
}

TEST_F(Files, VisitsFilesWithTheirProperties) {
    Put("v/a.txt", "12345");
    Put("v/b.doc", "1");
    Put("v/d/c.txt", "123");
    Put("v/d/e/f.txt", "");
    const bool hasLink = Link("v", "v/d/above");
    struct Seen {
        Names names;
        long long size = 0;
        int stopAfter = 100;
    } all, some, one;
    const OSFileVisitor visitor = [](void* context, OSFileEntry const& entry) -> unsigned char {
        auto* const seen = static_cast<Seen*>(context);
        seen->names.insert(std::string(entry.name) + "fdl*?"[entry.kind]);
        if (entry.kind == osKindFile) seen->size += entry.size;
        EXPECT_NEAR(static_cast<double>(entry.modified), static_cast<double>(std::time(nullptr)),
                    60);
        struct _stat status;
        EXPECT_EQ(OSFileStat(entry.path, status), 0) << entry.path;
        return --seen->stopAfter != 0;
    };
    EXPECT_EQ(OSVisitFiles(Path("v"), "*", visitor, &all, 1), 0);
    Names expected{"a.txtf", "b.docf", "dd", "c.txtf", "ed", "f.txtf"};
    if (hasLink) expected.insert("abovel");  // not followed
    EXPECT_EQ(all.names, expected);
    EXPECT_EQ(all.size, 9);
    EXPECT_EQ(OSVisitFiles(Path("v"), "*.txt", visitor, &some, 1), 0);
    EXPECT_EQ(some.names, (Names{"a.txtf", "c.txtf", "f.txtf"}));
    one.stopAfter = 1;
    EXPECT_EQ(OSVisitFiles(Path("v"), "*", visitor, &one, 1), osVisitStopped);
    EXPECT_EQ(one.names.size(), 1u);
    EXPECT_EQ(OSVisitFiles(Path("v"), "*", nullptr, nullptr, 1), osFileFailed);
    const OSFileVisitor unread = [](void* context, OSFileEntry const& entry) -> unsigned char {
        *static_cast<int*>(context) += entry.kind == osKindUnreadable;
        return 1;
    };
    int count = 0;
    EXPECT_EQ(OSVisitFiles(Path("none"), "*", unread, &count, 1), osFileFailed);
    EXPECT_EQ(count, 1);
}

// -- Code sets -----------------------------------------------------------------------------------

TEST_F(Files, SecondBytesAreNotSeparators) {
    const CodeSetGuard japanese(mbShiftJis);
    const std::string folder = At("\x95\x5C"), file = folder + "\\\x83\x5C.txt";
    EXPECT_EQ(OSCreateDirectory(folder.c_str()), 0);
    char byte = 'x';
    ASSERT_EQ(OSWriteBinaryFileContents(&byte, 1, file.c_str(), osFailIfExists), 1);
    EXPECT_TRUE(fs::exists(fs::path(u8"files_test/表/ソ.txt")));
    EXPECT_EQ(Binary(file.c_str()).Bytes(), "x");
    CGNStringList list, capitals;
    OSGetFileList(folder.c_str(), "\x83\x5C*", list, 0, 1);
    EXPECT_EQ(Sorted(list), Names{file});
    OSGetFileList(folder.c_str(), "?.TXT", capitals, 1, 0);
    EXPECT_EQ(Sorted(capitals), Names{"\x83\x5C.txt"});
    EXPECT_STREQ(OSGetFileFromPath(file.c_str()), "\x83\x5C.txt");
    CGNString report;
    ASSERT_TRUE(OSGetReportTempFileName("\x95\x5C", "", report));
    EXPECT_NE(std::strstr(report, "\x95\x5C()"), nullptr);
    EXPECT_EQ(OSRemoveDirectory(folder.c_str()), osDirectoryNotEmpty);
    EXPECT_EQ(OSRemoveDirectoryAndContents(folder.c_str()), 0);
    EXPECT_EQ(Left(""), Names());
}

TEST_F(Files, StreamsOpenTheSamePaths) {
    const CodeSetGuard japanese(mbShiftJis);
    Put("in", "\x8A\xBF\n");
    const std::string converted = At("\x95\x5C.1"), back = At("\x95\x5C.2");
    CGNString log(Path("\x95\x5C.4"));
    EXPECT_EQ(mbconvertnativefile(At("in").c_str(), converted.c_str(), 0, mbEucJp), 1);
    EXPECT_EQ(mbconvertfile2native(converted.c_str(), back.c_str(), 0, mbEucJp), 1);
    EXPECT_TRUE(CGNPerf::OpenFile(Path("\x95\x5C.3")));
    CGNPerf::CloseFile();
    OSTime::EnableLog(0);
    {
        CGNTrace trace;
        EXPECT_TRUE(trace.Init() && trace.ResetOutput(1, log, 1));
        trace.ResetMask(1);
        for (int i = 0; i < 2; ++i) trace.WriteMsg(nullptr, 1, "", "line %d", i);  // starts over
    }
    for (const fs::path name : {u8"表.1", u8"表.2", u8"表.3", u8"表.4"})
        EXPECT_TRUE(fs::exists(At("") / name)) << name;
    EXPECT_EQ(Binary(back.c_str()).Bytes().substr(0, 2), "\x8A\xBF");
    EXPECT_NE(Binary(log).Bytes().find("line 1"), std::string::npos);
}

TEST_F(Files, ReopensNamesThatDoNotConvert) {
    if (!kPosix) GTEST_SKIP() << "names are 16-bit characters";
    const CodeSetGuard japanese(mbShiftJis);
    // A name of Latin letters, one that is no text at all, and both in a directory of such a name.
    for (const char* name : {"caf\xC3\xA9", "\x83\x5C\x81", "\xC3\xA9/\x83\x65"}) {
        Put(name, name);
        CGNStringList list;
        OSGetFileList("files_test", "*", list, 1, 1);
        ASSERT_EQ(list.GetCount(), 1) << name;
        EXPECT_EQ(Binary(*list.GetItem(0)).Bytes(), name);
        EXPECT_EQ(OSRemoveFile(*list.GetItem(0)), 0);
        OSDeleteDirectoryTree(Path("\xC3\xA9"));
        EXPECT_EQ(Left(""), Names());
    }
    // A system's name with a separator of this library: only that file is removed.
    Put("d\\e");
    Put("d/e");
    OSRemovePatternFromDirectory("files_test",
                                 [](CGNString& name) -> unsigned char { return name == "d\\e"; });
    EXPECT_EQ(Left(""), Names{"d"});
    EXPECT_TRUE(Has("d/e"));
}
