#include "osutil/resource/resource_file.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "genutil/allocate.h"
#include "genutil/ascii.h"
#include "genutil/mbutil/code_set.h"

namespace genutil {

namespace {

// Windows does not load files with more sections.
constexpr unsigned kMostSections = 96;
constexpr unsigned kSectionSize = 40;

constexpr unsigned kStringKind = 6, kVersionKind = 16, kVersionId = 1;

// A directory consists of a header, entries with names, and entries with numbers in ascending
// order.
constexpr unsigned kDirectorySize = 16, kEntrySize = 8;
constexpr std::uint32_t kIsDirectory = 0x80000000;

struct Entries {
    std::uint64_t at;  // position of the first entry with a number
    unsigned count;
};

Entries NumberedEntries(const Bytes& tree, std::uint32_t directory) {
    const std::uint64_t named = tree.Read16(std::uint64_t{directory} + 12);
    return {directory + kDirectorySize + named * kEntrySize,
            tree.Read16(std::uint64_t{directory} + 14)};
}

// Returns true if the table of sections and everything to which it refers are present, as required
// for loading.
bool HasSections(const Bytes& file, std::uint64_t table, unsigned count) {
    if (!file.Has(table, std::uint64_t{count} * kSectionSize)) return false;
    for (unsigned i = 0; i < count; ++i, table += kSectionSize) {
        const std::uint32_t size = file.Read32(table + 16);
        if (size != 0 && !file.Has(file.Read32(table + 20), size)) return false;
    }
    return true;
}

}  // namespace

bool ResourceFile::Open(Bytes file) {
    *this = {};
    const std::uint64_t header = file.Read32(0x3C);
    if (file.Read16(0) != 0x5A4D /* MZ */ || !file.Has(header, 24) ||
        file.Read32(header) != 0x4550 /* PE */)
        return false;
    const unsigned optionalSize = file.Read16(header + 20);
    const Bytes optional = file.Part(header + 24, optionalSize);
    const unsigned magic = optional.Read16(0);
    if (magic != 0x10B && magic != 0x20B) return false;
    const unsigned count = file.Read16(header + 6);
    if (count > kMostSections || !HasSections(file, header + 24 + optionalSize, count))
        return false;
    m_file = file;
    m_sections = file.Part(header + 24 + optionalSize, std::uint64_t{count} * kSectionSize);

    // The third of the data directories, which have a higher offset in 64-bit files.
    const unsigned directories = magic == 0x10B ? 96 : 112;
    if (optional.Read32(directories - 4) < 3) return true;
    m_tree = AtAddress(optional.Read32(directories + 16));
    std::uint32_t target;
    if (FindEntry(0, kStringKind, &target) && target & kIsDirectory)
        m_strings = target & ~kIsDirectory;
    if (FindEntry(0, kVersionKind, &target) && target & kIsDirectory)
        m_versions = target & ~kIsDirectory;
    return true;
}

// Returns the part of the file from an address in the loaded program to the end of its section.
Bytes ResourceFile::AtAddress(std::uint32_t address) const {
    if (address == 0) return {};
    for (std::size_t at = 0; m_sections.Has(at, kSectionSize); at += kSectionSize) {
        const std::uint32_t start = m_sections.Read32(at + 12), size = m_sections.Read32(at + 16);
        if (address >= start && address - start < size)
            return m_file.Part(m_sections.Read32(at + 20), size).From(address - start);
    }
    return {};
}

bool ResourceFile::FindEntry(std::uint32_t directory, unsigned id, std::uint32_t* target) const {
    Entries entries = NumberedEntries(m_tree, directory);
    while (entries.count != 0) {
        const unsigned half = entries.count / 2;
        const std::uint64_t middle = entries.at + std::uint64_t{half} * kEntrySize;
        const std::uint32_t found = m_tree.Read32(middle);
        if (found == id && m_tree.Has(middle, kEntrySize)) {
            *target = m_tree.Read32(middle + 4);
            return true;
        }
        if (found < id && m_tree.Has(middle, kEntrySize)) {
            entries.at = middle + kEntrySize;
            entries.count -= half + 1;
        } else {
            entries.count = half;
        }
    }
    return false;
}

Bytes ResourceFile::FindLeaf(std::uint32_t kind, unsigned id, unsigned language) const {
    std::uint32_t target;
    if (kind == 0 || !FindEntry(kind, id, &target) || !(target & kIsDirectory)) return {};
    const std::uint32_t languages = target & ~kIsDirectory;
    bool found = false;
    for (const unsigned choice : {0u, language, PrimaryLanguage(language), 0x409u})
        if ((found = FindEntry(languages, choice, &target))) break;
    if (!found) {
        const std::uint64_t first = std::uint64_t{languages} + kDirectorySize;
        if (m_tree.Read16(std::uint64_t{languages} + 12) + m_tree.Read16(first - 2) == 0) return {};
        if (!m_tree.Has(first, kEntrySize)) return {};
        target = m_tree.Read32(first + 4);
    }
    if (target & kIsDirectory || !m_tree.Has(target, 16)) return {};
    const std::uint32_t size = m_tree.Read32(std::uint64_t{target} + 4);
    const Bytes data = AtAddress(m_tree.Read32(target));
    return data.Has(0, size) ? data.Part(0, size) : Bytes();
}

// In the file, block numbers begin with 1.
unsigned ResourceFile::CountStringBlocks() const {
    return m_strings == 0 ? 0 : NumberedEntries(m_tree, m_strings).count;
}
unsigned ResourceFile::StringBlockAt(unsigned i) const {
    return m_tree.Read32(NumberedEntries(m_tree, m_strings).at + std::uint64_t{i} * kEntrySize) - 1;
}
Bytes ResourceFile::FindStrings(unsigned block, unsigned language) const {
    return FindLeaf(m_strings, block + 1, language);
}

Bytes ResourceFile::FindVersion(unsigned language) const {
    return FindLeaf(m_versions, kVersionId, language);
}

bool ResourceStrings::Fill(const ResourceFile& file, unsigned language) {
    Clear();
    std::uint16_t count = 0;
    for (unsigned i = 0; i < file.CountStringBlocks(); ++i) {
        const unsigned number = file.StringBlockAt(i);
        if (number < std::size(m_blockOf) && m_blockOf[number] == 0 &&
            file.FindStrings(number, language).Size() != 0)
            m_blockOf[number] = ++count;
    }
    if (count == 0) return true;
    m_blocks = static_cast<Block*>(Allocate(count * sizeof(Block)));
    if (!m_blocks) return false;
    for (unsigned i = 0; i < std::size(m_blockOf); ++i) {
        if (m_blockOf[i] == 0) continue;
        const Bytes block = file.FindStrings(i, language);
        std::uint64_t at = 0;  // position of a string, which follows its number of characters
        for (ResourceText& text : m_blocks[m_blockOf[i] - 1].texts) {
            const unsigned length = block.Read16(at);
            text = {};
            const bool isAligned = reinterpret_cast<std::uintptr_t>(block.Data()) % 2 == 0;
            if (isAligned && block.Has(at + 2, std::uint64_t{length} * 2))
                text = {block.Data() + at + 2, length};
            at += 2 + std::uint64_t{length} * 2;
        }
    }
    return true;
}

void ResourceStrings::Clear() {
    Release(m_blocks);
    m_blocks = nullptr;
    std::fill(std::begin(m_blockOf), std::end(m_blockOf), std::uint16_t{0});
}

namespace {

// A version resource consists of blocks: the total length, the length of the value, the kind of the
// value, a name terminated by 0, the value, and nested blocks. Values and blocks begin at multiples
// of 4 from the start of the resource.
struct VersionBlock {
    std::uint64_t value = 0, valueSize = 0, inner = 0, end = 0;  // positions; end is 0 if there is
                                                                 // no block
};

std::uint64_t Aligned(std::uint64_t at) {
    return (at + 3) & ~std::uint64_t{3};
}

// Reads the block at a position if its name equals `name`, ignoring letter case.
VersionBlock ReadBlock(const Bytes& resource, std::uint64_t at, std::uint64_t end,
                       const char* name) {
    VersionBlock block;
    const std::uint64_t size = resource.Read16(at);
    std::uint64_t letter = at + 6;
    for (;; ++name, letter += 2) {
        if (letter + 2 > at + size || letter + 2 > end) return {};
        const unsigned c = resource.Read16(letter);
        if (AsciiLower(c) != static_cast<unsigned char>(AsciiLower(*name))) return {};
        if (c == 0) break;
    }
    block.end = at + size < end ? at + size : end;
    block.value = Aligned(letter + 2);
    block.valueSize = resource.Read16(at + 2);
    block.inner = Aligned(block.value + block.valueSize);
    return block;
}

VersionBlock FindInner(const Bytes& resource, const VersionBlock& outer, const char* name) {
    for (std::uint64_t at = outer.inner; at + 6 <= outer.end;) {
        const VersionBlock block = ReadBlock(resource, at, outer.end, name);
        if (block.end) return block;
        const unsigned size = resource.Read16(at);
        if (size < 6) break;
        at = Aligned(at + size);
    }
    return {};
}

}  // namespace

bool ReadVersionRecord(Bytes resource, VersionRecord* record) {
    constexpr unsigned kFixedSize = 52;
    constexpr std::uint32_t kSignature = 0xFEEF04BD;
    const VersionBlock root = ReadBlock(resource, 0, resource.Size(), "VS_VERSION_INFO");
    if (root.valueSize < kFixedSize || root.value + kFixedSize > root.end ||
        resource.Read32(root.value) != kSignature)
        return false;
    *record = {resource.Read32(root.value + 8), resource.Read32(root.value + 12), 0};
    const VersionBlock variables = FindInner(resource, root, "VarFileInfo");
    const VersionBlock translation = FindInner(resource, variables, "Translation");
    if (translation.valueSize >= 4 && translation.value + 4 <= translation.end)
        record->language = resource.Read16(translation.value);
    return true;
}

}  // namespace genutil
