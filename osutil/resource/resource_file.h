// Reading the resources of a Windows program or DLL, 32-bit or 64-bit, from the bytes of its file.
//
// Resources form a tree of three levels: kind, number, language. A leaf refers to bytes by their
// address in the loaded program. The table of sections gives their position in the file. The
// content is not trusted: every number is compared with the available bytes before use, every walk
// is a loop of bounded length, and a leaf at the wrong level is ignored.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

// Untrusted bytes with little-endian numbers. Bytes out of range read as nothing.
class Bytes {
  public:
    Bytes() = default;
    Bytes(const unsigned char* data, std::size_t size) : m_data(data), m_size(size) {}

    const unsigned char* Data() const { return m_data; }
    std::size_t Size() const { return m_size; }

    // Returns true if there are `size` bytes at `at`.
    bool Has(std::uint64_t at, std::uint64_t size) const {
        return at <= m_size && size <= m_size - at;
    }
    // Return 0 if there is no such number.
    unsigned Read16(std::uint64_t at) const {
        return Has(at, 2) ? m_data[at] | unsigned{m_data[at + 1]} << 8 : 0;
    }
    std::uint32_t Read32(std::uint64_t at) const {
        return Has(at, 4) ? Read16(at) | std::uint32_t{Read16(at + 2)} << 16 : 0;
    }
    // Returns the available part of `size` bytes.
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

// A text of 16-bit characters.
struct ResourceText {
    const unsigned char* units = nullptr;
    std::size_t count = 0;

    unsigned short Unit(std::size_t i) const {
        return static_cast<unsigned short>(units[2 * i] | units[2 * i + 1] << 8);
    }
};

class ResourceFile {
  public:
    // Opens a file. The bytes are owned by the caller and must exist as long as this object is
    // used. Returns false if they are not a complete program or DLL. A file without resources is
    // not a failure.
    bool Open(Bytes file);

    // Strings are stored in blocks of 16, numbered from 0. StringBlockAt() returns the number of
    // the i-th block in the file, i < CountStringBlocks(). The numbers may be in any order.
    unsigned CountStringBlocks() const;
    unsigned StringBlockAt(unsigned i) const;

    // Returns a block of strings, or nothing if there is none. If it exists in several languages,
    // the one is chosen that Windows chooses for a user of `language`: neutral, the user's, the
    // user's primary language without a country, English (0x0409), otherwise the first.
    Bytes FindStrings(unsigned block, unsigned language) const;

    // Returns the version resource in the language chosen likewise, or nothing if there is none.
    Bytes FindVersion(unsigned language) const;

  private:
    Bytes AtAddress(std::uint32_t address) const;
    bool FindEntry(std::uint32_t directory, unsigned id, std::uint32_t* target) const;
    Bytes FindLeaf(std::uint32_t kind, unsigned id, unsigned language) const;

    Bytes m_file, m_sections, m_tree;
    std::uint32_t m_strings = 0, m_versions = 0;  // their directories in the tree; 0 if there is
                                                  // none
};

// The strings of a file, found by number without a search.
class ResourceStrings {
  public:
    ResourceStrings() = default;
    ResourceStrings(const ResourceStrings&) = delete;
    ResourceStrings& operator=(const ResourceStrings&) = delete;
    ~ResourceStrings() { Clear(); }

    // Takes the strings of a file, in the language for a user of `language`. A string that is
    // missing in that block is not searched for in another language. Returns false if allocation
    // fails.
    bool Fill(const ResourceFile& file, unsigned language);
    void Clear();

    // Finds a string. Returns false if there is none, if it is empty, or if it is at an odd
    // address, where no tool puts it.
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

    std::uint16_t m_blockOf[(kMostId + 1) / kInBlock] = {};  // index from 1; 0 for none
    Block* m_blocks = nullptr;
};

// The numbers of a version resource.
struct VersionRecord {
    std::uint32_t high = 0, low = 0;  // version of the file, two 16-bit numbers each
    unsigned language = 0;            // language of the first translation; 0 if there is none
};

// Returns false if the bytes are not a version resource with its fixed part.
bool ReadVersionRecord(Bytes resource, VersionRecord* record);

}  // namespace genutil
