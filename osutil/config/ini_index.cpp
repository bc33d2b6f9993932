#include "osutil/config/ini_index.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "osutil/config/ini_text.h"

namespace genutil {

namespace {

constexpr std::size_t kMostEntries = 1 << 16;
constexpr unsigned kMostSteps = 256;  // to a free place; more means that hundreds of lines have the
                                      // same name

std::uint32_t OffsetIn(std::string_view text, const char* at) {
    return static_cast<std::uint32_t>(at - text.data());
}

std::string_view LineAt(std::string_view text, std::uint32_t offset) {
    const char* at = text.data() + offset;
    return {at, static_cast<std::size_t>(EndOfIniLine(at, text.data() + text.size()) - at)};
}

std::uint32_t HashOfEntry(std::uint32_t section, std::string_view key) {
    return std::rotl(section, 5) + HashIniName(key) * 0x9E3779B1u;
}

}  // namespace

void IniIndex::Clear() {
    Release(m_entries);
    m_entries = nullptr;
}

void IniIndex::Swap(IniIndex* other) {
    std::swap(m_entries, other->m_entries);
    std::swap(m_mask, other->m_mask);
}

bool IniIndex::Build(std::string_view text) {
    Clear();
    // Each entry has one of these characters. The table stays half empty.
    const auto entries = static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return c == '=' || c == '['; }));
    if (entries > kMostEntries) return false;
    const std::size_t size = std::bit_ceil(entries * 2 + 2);
    m_entries = static_cast<Entry*>(Allocate(std::uint64_t{size} * sizeof(Entry)));
    if (!m_entries) return false;
    std::fill_n(m_entries, size, Entry{0, 0, kFree});
    m_mask = size - 1;

    IniSections sections(SkipIniMark(text));
    while (sections.Next()) {
        const std::uint32_t hash = HashIniName(sections.Name());
        if (HasSection(text, hash, sections.Name()))
            continue;  // only the first section of a name
                       // is used
        const std::uint32_t offset = OffsetIn(text, sections.Head());
        if (!Add({hash, offset, offset}) || !AddLines(text, offset, hash, sections.Lines()))
            return false;
    }
    return true;
}

bool IniIndex::AddLines(std::string_view text, std::uint32_t head, std::uint32_t hash,
                        std::string_view lines) {
    const char* const end = lines.data() + lines.size();
    std::string_view key, value;
    for (const char *at = lines.data(), *next; at != end; at = next) {
        next = EndOfIniLine(at, end);
        if (SplitIniLine({at, static_cast<std::size_t>(next - at)}, &key, &value) &&
            !Add({HashOfEntry(hash, key), head, OffsetIn(text, at)}))
            return false;
    }
    return true;
}

// Entries with the same hash are in the order of their lines, so that the first line is found.
bool IniIndex::Add(const Entry& entry) {
    std::size_t place = PlaceOf(entry.hash);
    for (unsigned steps = 0; m_entries[place].line != kFree; place = (place + 1) & m_mask)
        if (++steps > kMostSteps) return false;
    m_entries[place] = entry;
    return true;
}

bool IniIndex::HasSection(std::string_view text, std::uint32_t hash, std::string_view name) const {
    for (std::size_t place = PlaceOf(hash);; place = (place + 1) & m_mask) {
        const Entry& entry = m_entries[place];
        if (entry.line == kFree) return false;
        if (entry.hash == hash && entry.line == entry.head &&
            SameIniName(NameOfIniHead(LineAt(text, entry.head)), name))
            return true;
    }
}

bool IniIndex::Find(std::string_view text, std::string_view section, std::string_view key,
                    std::string_view* value) const {
    section = TrimIni(section);
    key = TrimIni(key);
    const std::uint32_t hash = HashOfEntry(HashIniName(section), key);
    for (std::size_t place = PlaceOf(hash);; place = (place + 1) & m_mask) {
        const Entry& entry = m_entries[place];
        if (entry.line == kFree) return false;
        std::string_view name, found;
        if (entry.hash == hash && entry.line != entry.head &&
            SplitIniLine(LineAt(text, entry.line), &name, &found) && SameIniName(name, key) &&
            SameIniName(NameOfIniHead(LineAt(text, entry.head)), section)) {
            *value = UnquotedIni(found);
            return true;
        }
    }
}

}  // namespace genutil
