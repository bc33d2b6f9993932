// Reading resource files, whole and damaged. fuzz/resource_unit_fuzz.cpp reads any bytes.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "osutil/resource/resource_file.h"
#include "osutil/resource/resource_table.h"

using namespace genutil;

namespace {

using Image = std::vector<unsigned char>;

Image Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

unsigned Number(const Image& image, std::size_t at, int bytes) {
    unsigned value = 0;
    while (bytes--) value = value << 8 | image.at(at + static_cast<std::size_t>(bytes));
    return value;
}
void Put(Image& image, std::size_t at, int bytes, unsigned value) {
    for (; bytes--; value >>= 8) image.at(at++) = static_cast<unsigned char>(value);
}

// Places in a file. The optional header of 64-bit files has 16 bytes more before its directories.
struct Places {
    std::size_t header, optional, directories, resources, sections, tree;
    explicit Places(const Image& image)
        : header(Number(image, 0x3C, 4)),
          optional(header + 24),
          directories(optional + (Number(image, optional, 2) == 0x20B ? 108 : 92)),
          resources(directories + 20),
          sections(optional + Number(image, header + 20, 2)),
          tree(0) {
        for (std::size_t at = sections; tree == 0; at += 40)
            if (Number(image, at + 12, 4) == Number(image, resources, 4))
                tree = Number(image, at + 20, 4);
    }
};

// All that a file contains, as text. The file is in a block of its exact size.
std::string Examine(const Image& image) {
    const auto exact = std::make_unique<unsigned char[]>(image.size());
    std::copy(image.begin(), image.end(), exact.get());
    const unsigned char* const end = exact.get() + image.size();
    ResourceFile file;
    if (!file.Open({exact.get(), image.size()})) return "none";
    std::string found;
    ResourceStrings strings;
    EXPECT_TRUE(strings.Fill(file, 0x407));
    for (const unsigned id : {0u, 15u, 16u, 1000u, 1020u, 1040u, 1060u, 1200u, 65535u}) {
        ResourceText text;
        if (!strings.Find(id, &text)) continue;
        EXPECT_TRUE(text.count > 0 && text.units >= exact.get() &&
                    text.count <= static_cast<std::size_t>(end - text.units) / 2);
        unsigned sum = 0;
        for (std::size_t i = 0; i < text.count; ++i) sum += text.Unit(i);
        found += std::to_string(id) + (sum ? " " : "? ");
    }
    VersionRecord version;
    if (ReadVersionRecord(file.FindVersion(0x411), &version))
        found += "v" + std::to_string(version.high >> 16) + "/" + std::to_string(version.language);
    return found;
}

constexpr char kAll[] = "0 15 16 1000 1020 1040 1060 1200 65535 v7/1041";

void ExamineDamaged(const Image& whole) {
    ASSERT_GT(whole.size(), 1024u);
    EXPECT_EQ(Examine(whole), kAll);
    const Places at(whole);
    const struct {
        int line;
        std::size_t at;
        int bytes;
        unsigned value;
        const char* found;
    } kRows[] = {
        {__LINE__, 0, 1, 'N', "none"},
        {__LINE__, 0x3C, 4, 0xFFFFFFF0, "none"},
        {__LINE__, 0x3C, 4, static_cast<unsigned>(whole.size()) - 23, "none"},
        {__LINE__, at.header, 1, 'N', "none"},
        {__LINE__, at.header + 6, 2, 0, ""},  // sections
        {__LINE__, at.header + 6, 2, 0xFFFF, "none"},
        {__LINE__, at.sections + 16, 4, 0x7FFFFFFF, "none"},  // bytes of a section
        {__LINE__, at.header + 20, 2, 0, "none"},             // size of the optional header
        {__LINE__, at.header + 20, 2, 0xFFFF, "none"},        //
        {__LINE__, at.optional, 2, 0x107, "none"},            // its kind
        {__LINE__, at.directories, 4, 2, ""},                 // directories
        {__LINE__, at.directories, 4, 0xFFFFFFFF, kAll},
        {__LINE__, at.resources, 4, 0, ""},  // address of the resources
        {__LINE__, at.resources, 4, 0xFFFFFFFF, ""},
        {__LINE__, at.tree + 14, 2, 0, ""},  // kinds
        {__LINE__, at.tree + 14, 2, 1, "0 15 16 1000 1020 1040 1060 1200 65535 "},
        {__LINE__, at.tree + 12, 2, 0xFFFF, ""},             // kinds with names
        {__LINE__, at.tree + 20, 4, 0, "v7/1041"},           // a leaf too early
        {__LINE__, at.tree + 20, 4, 0x80000000, "v7/1041"},  // the root within itself
        {__LINE__, at.tree + 20, 4, 0xFFFFFFFF, "v7/1041"},
    };
    for (const auto& row : kRows) {
        Image damaged = whole;
        Put(damaged, row.at, row.bytes, row.value);
        EXPECT_EQ(Examine(damaged), row.found) << row.line;
    }
}

}  // namespace

// One of the files has 32 bits, the other 64.
TEST(ResourceFile, ReadsWhatDamageLeaves) {
    const Image files[] = {Read(TEST_RESOURCES "texts.dll"), Read(TEST_RESOURCES "foreign.dll")};
    EXPECT_NE(Number(files[0], Places(files[0]).optional, 2),
              Number(files[1], Places(files[1]).optional, 2));
    for (const Image& file : files) ExamineDamaged(file);
}

TEST(ResourceFile, RefusesEachBeginningOfAFile) {
    const Image whole = Read(TEST_RESOURCES "other.dll");
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(Examine(Image(whole.begin(), whole.begin() + static_cast<long>(size))), "none");
}

TEST(ResourceFile, ReadsVersionsFromTheirBlocks) {
    const Image image = Read(TEST_RESOURCES "texts.dll");
    ResourceFile file;
    ASSERT_TRUE(file.Open({image.data(), image.size()}));
    const Bytes resource = file.FindVersion(0);
    const Image whole(resource.Data(), resource.Data() + resource.Size());
    constexpr std::size_t kRoot = 0, kFixed = 40, kVariables = 92, kTranslation = 124;
    const struct {
        int line;
        std::size_t at;
        int bytes;
        unsigned value;
        int language;  // -1: no version
    } kRows[] = {
        {__LINE__, kRoot, 2, Number(whole, 0, 2), 0x411},
        {__LINE__, kRoot, 2, 0xFFFF, 0x411},
        {__LINE__, kRoot, 2, 91, -1},
        {__LINE__, kRoot, 2, 92, 0},
        {__LINE__, kRoot + 2, 2, 51, -1},
        {__LINE__, kRoot + 6, 1, 'v', 0x411},
        {__LINE__, kRoot + 6, 1, 'W', -1},
        {__LINE__, kRoot + 8, 1, 's', 0x411},
        {__LINE__, kFixed, 1, 0, -1},
        {__LINE__, kVariables, 2, 0, 0},
        {__LINE__, kVariables, 2, 5, 0},
        {__LINE__, kVariables, 2, 0xFFFF, 0x411},
        {__LINE__, kVariables + 2, 2, 0xFFFF, 0},
        {__LINE__, kVariables + 6, 1, 'X', 0},
        {__LINE__, kTranslation, 2, 35, 0},
        {__LINE__, kTranslation + 2, 2, 3, 0},
        {__LINE__, kTranslation + 6, 1, 'X', 0},
    };
    for (const auto& row : kRows) {
        Image damaged = whole;
        Put(damaged, row.at, row.bytes, row.value);
        VersionRecord record;
        const bool read = ReadVersionRecord({damaged.data(), damaged.size()}, &record);
        EXPECT_EQ(read ? static_cast<int>(record.language) : -1, row.language) << row.line;
    }
}

TEST(ResourceTable, RemovesOnlyALibraryThatIsThereTwice) {
    int modules[3];
    void *const a = modules, *const b = modules + 1, *const c = modules + 2;
    using Slots = std::vector<void*>;
    const struct {
        int line;
        Slots before;
        void* module;
        bool removed;
        Slots after;
    } kRows[] = {
        {__LINE__, {}, a, false, {}},
        {__LINE__, {}, nullptr, false, {}},
        {__LINE__, {a}, a, false, {a}},
        {__LINE__, {a, b}, a, false, {a, b}},
        {__LINE__, {a, b, a}, a, false, {a, b, a}},
        {__LINE__, {a, b}, c, false, {a, b}},
        {__LINE__, {a, a}, a, true, {a}},
        {__LINE__, {b, a, a, c}, a, true, {b, a, c}},
        {__LINE__, {b, b, b, b, b, b, b, b, a, a}, a, true, {b, b, b, b, b, b, b, b, a}},
        {__LINE__, {b, b, b, b, b, b, b, b, b, a}, a, false, {b, b, b, b, b, b, b, b, b, a}},
        {__LINE__, Slots(10, b), a, false, Slots(10, b)},
    };
    for (const auto& row : kRows) {
        ResourceTable table;
        std::copy(row.before.begin(), row.before.end(), table.slots);
        EXPECT_EQ(table.Remove(row.module), row.removed) << row.line;
        Slots after(table.slots, table.slots + ResourceTable::kSlots);
        while (!after.empty() && !after.back()) after.pop_back();
        EXPECT_EQ(after, row.after) << row.line;
    }
}
