// Modules of the platform layer.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "genutil/allocate.h"
#include "osutil/platform/resource/modules.h"
#include "tests/support/code_set_guard.h"

using namespace genutil;
using namespace genutil::platform;
namespace fs = std::filesystem;

namespace {

// The text 1200 of other.dll has 5 characters, that of texts.dll and foreign.dll 8.
std::size_t Length(Module module) {
    std::size_t count = 0;
    return FindModuleString(module, 1200, &count) ? count : 0;
}

std::string FileOf(Module module) {
    const CGNString file = ModuleFile(module);
    return fs::path(static_cast<const char*>(file)).filename().string();
}

}  // namespace

// On Windows foreign.dll is for another processor than the program.
TEST(Modules, FilesAreLoadedOnceAndCounted) {
    const struct {
        int line;
        const char* file;
        std::size_t length;
    } kRows[] = {{__LINE__, TEST_RESOURCES "other.dll", 5},
                 {__LINE__, TEST_RESOURCES "foreign.dll", 8}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const fs::path copy = "once.dll";
        fs::remove(copy);
        fs::copy_file(row.file, copy);
        const Module module = LoadResourceLibrary("once.dll");
        ASSERT_TRUE(module);
        EXPECT_EQ(LoadResourceLibrary(fs::absolute(copy).string().c_str()), module);
        EXPECT_EQ(LoadResourceLibrary("once"), module);
        EXPECT_EQ(FileOf(module), "once.dll");
        for (int uses = 3; uses > 0; --uses) {
            EXPECT_EQ(Length(module), row.length) << uses;
            FreeResourceLibrary(module);
        }
        EXPECT_EQ(Length(module), 0u);
        EXPECT_EQ(FileOf(module), "");
        FreeResourceLibrary(module);
        fs::remove(copy);
    }
}

TEST(Modules, FileNamesAreInTheCurrentCodeSet) {
    const CodeSetGuard codeSet(mbShiftJis);
    const fs::path copy = u8"表.dll";  // ends in 0x5C there
    fs::copy_file(TEST_RESOURCES "texts.dll", copy, fs::copy_options::overwrite_existing);
    const Module module = LoadResourceLibrary("\x95\x5c.dll");
    EXPECT_EQ(Length(module), 8u);
    const CGNString file = ModuleFile(module);
    const std::string path = static_cast<const char*>(file);
    EXPECT_EQ(path.substr(path.size() < 6 ? 0 : path.size() - 6), "\x95\x5c.dll");
    std::size_t size = 0;
    unsigned char* version = ReadVersionResource("\x95\x5c.dll", &size);
    EXPECT_TRUE(version && size > 92);
    Release(version);
    FreeResourceLibrary(module);
    fs::remove(copy);
}

TEST(Modules, OnlyModulesHaveFiles) {
    EXPECT_EQ(FileOf(nullptr).substr(0, 10), "unit_tests");
    int local = 0;
    for (void* none : {static_cast<void*>(&local), reinterpret_cast<void*>(16)})
        EXPECT_EQ(FileOf(none), "");
    FreeResourceLibrary(nullptr);
    std::size_t size = 0;
    for (const char* file : {"", "missing.dll", "."})
        EXPECT_FALSE(LoadResourceLibrary(file) || ReadVersionResource(file, &size)) << file;
}
