// Reads the resources of a Windows program or DLL, 32-bit or 64-bit, out of the bytes of its file.
//
// Resources stand in a tree of three levels: kind, number, language. A leaf names bytes by their
// address in the program as it would be loaded; the table of sections says where in the file that
// is. All of it is taken for what anybody may have written: no number is believed before it is
// compared with the bytes that there are, every walk is a loop of bounded length, and a tree whose
// leaf comes early or late has no such leaf.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

// Bytes of somebody else, numbers little-endian. What lies outside reads as nothing.
class Bytes {
  public:
    Bytes() = default;
    Bytes(const unsigned char* data, std::size_t size) : m_data(data), m_size(size) {}

    const unsigned char* Data() const { return m_data; }
    std::size_t Size() const { return m_size; }

    // Whether `size` bytes stand at `at`.
    bool Has(std::uint64_t at, std::uint64_t size) const {
        return at <= m_size && size <= m_size - at;
    }
    // 0 where there is no such number.
    unsigned Read16(std::uint64_t at) const {
        return Has(at, 2) ? m_data[at] | unsigned{m_data[at + 1]} << 8 : 0;
    }
    std::uint32_t Read32(std::uint64_t at) const {
        return Has(at, 4) ? Read16(at) | std::uint32_t{Read16(at + 2)} << 16 : 0;
    }
    // As much of `size` bytes as there is.
    Bytes Part(std::uint64_t at, std::uint64_t size) const {
        if (at > m_size) return {};
        const std::size_t most = m_size - static_cast<std::size_t>(at);
        return {m_data + at, size < most ? static_cast<std::size_t>(size) : most};
    }
    Bytes From(std::uint64_t at) const { return Part(at, m_size); }

  private:
    const unsigned char* m_data = nullptr;
    std::size_t m_size = 0;
};

// 16-bit characters.
struct ResourceText {
    const unsigned char* units = nullptr;
    std::size_t count = 0;

    unsigned short Unit(std::size_t i) const {
        return static_cast<unsigned short>(units[2 * i] | units[2 * i + 1] << 8);
    }
};

class ResourceFile {
  public:
    // The bytes stay the caller's, for as long as anything is asked. False when they are no
    // program or DLL, or not all of it; one without resources is no failure.
    bool Open(Bytes file);

    // Strings stand in blocks of 16, numbered from 0. The number of the i-th block that the file
    // has, of CountStringBlocks(); may be any.
    unsigned CountStringBlocks() const;
    unsigned StringBlockAt(unsigned i) const;

    // A block of strings; empty when there is none. Where it stands in several languages, the one
    // is taken that Windows takes for a user of `language`: neutral, the user's, the user's primary
    // language without a country, English (0x0409), and else the first.
    Bytes FindStrings(unsigned block, unsigned language) const;

    // The version resource, in the language taken likewise; empty when there is none.
    Bytes FindVersion(unsigned language) const;

  private:
    Bytes AtAddress(std::uint32_t address) const;
    bool FindEntry(std::uint32_t directory, unsigned id, std::uint32_t* target) const;
    Bytes FindLeaf(std::uint32_t kind, unsigned id, unsigned language) const;

    Bytes m_file, m_sections, m_tree;
    std::uint32_t m_strings = 0, m_versions = 0;  // their directories in the tree; 0 without
};

// The strings of a file, found by their numbers without a search.
class ResourceStrings {
  public:
    ResourceStrings() = default;
    ResourceStrings(const ResourceStrings&) = delete;
    ResourceStrings& operator=(const ResourceStrings&) = delete;
    ~ResourceStrings() { Clear(); }

    // Takes those of a file, in the language for a user of `language`: a string which that block
    // lacks is not looked for in another. False without memory.
    bool Fill(const ResourceFile& file, unsigned language);
    void Clear();

    // False when there is none; an empty one counts as none, and so does one at an odd address,
    // where no tool puts it.
    bool Find(unsigned id, ResourceText* text) const {
        if (id > kMostId || !m_blocks) return false;
        const unsigned block = m_blockOf[id / kInBlock];
        if (block == 0) return false;
        *text = m_blocks[block - 1].texts[id % kInBlock];
        return text->count != 0;
    }

  private:
    static constexpr unsigned kInBlock = 16, kMostId = 0xFFFF;

    struct Block {
        ResourceText texts[kInBlock];
    };

    std::uint16_t m_blockOf[(kMostId + 1) / kInBlock] = {};  // from 1; 0 for none
    Block* m_blocks = nullptr;
};

// The numbers of a version resource.
struct VersionRecord {
    std::uint32_t high = 0, low = 0;  // of the file's version, two 16-bit numbers each
    unsigned language = 0;            // of the first translation; 0 without any
};

// False when the bytes are no version resource with its fixed part.
bool ReadVersionRecord(Bytes resource, VersionRecord* record);

}  // namespace genutil
