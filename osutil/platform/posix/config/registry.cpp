// The registry in the user's store.
#include "osutil/platform/config/registry.h"

#include <algorithm>
#include <cstring>

#include "osutil/platform/posix/config/registry_store.h"
#include "osutil/platform/posix/config/registry_text.h"
#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

namespace {

constexpr std::size_t kLongestValueName = 16383;

// The place of a value, folded for comparison.
class Place {
  public:
    Place(const char* key, const char* name)
        : m_key(key, StoreText::kFolded), m_name(name, StoreText::kFolded) {
        m_isValid = m_key.IsMade() && m_name.IsMade() && m_key.MakeKeyPath() &&
                    m_name.Get().size() <= kLongestValueName;
    }
    bool IsValid() const { return m_isValid; }
    std::string_view Key() const { return m_key.Get(); }
    std::string_view Name() const { return m_name.Get(); }

  private:
    StoreText m_key, m_name;
    bool m_isValid;
};

// Converts a text of the store to the current code set.
bool StoreInCodeSet(std::string_view text, char* out, std::size_t size) {
    const bool ascii = std::none_of(text.begin(), text.end(),
                                    [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    const NameText converted(ascii ? "" : text.data());
    if (!ascii) text = converted.Get() ? converted.Get() : std::string_view();
    if ((!ascii && !converted.Get()) || text.size() >= size) return false;
    std::memcpy(out, text.data(), text.size());
    out[text.size()] = 0;
    return true;
}

// The longest text that can fit in a caller's buffer of 1 KB: a byte of a code set has three bytes
// in UTF-8 at most.
constexpr std::size_t kLongestText = 4096;

// Copies a text, which is gone at the end of the execution. Conversion comes after that, because a
// failed allocation is reported to a function of the program, which may read a setting.
bool CopyText(std::string_view text, char (&out)[kLongestText]) {
    if (text.size() >= sizeof out) return false;
    std::memcpy(out, text.data(), text.size());
    out[text.size()] = 0;
    return true;
}

bool FetchValue(const Place& place, char (&out)[kLongestText]) {
    StoreRun run(StoreQuery::kRead);
    run.Bind(1, place.Key());
    run.Bind(2, place.Name());
    return run.Row() && CopyText(run.Text(0), out);
}

// Terminated texts in a row.
class TextRow {
  public:
    bool Add(std::string_view text) {
        if (m_room - m_size <= text.size() && !Grow(text.size() + 1)) return false;
        std::memcpy(m_bytes.Get() + m_size, text.data(), text.size());
        m_bytes.Get()[m_size + text.size()] = 0;
        m_size += text.size() + 1;
        return true;
    }
    // The text at a position, which is advanced to the next one.
    std::string_view Next(std::size_t* at) const {
        const std::string_view text(m_bytes.Get() + *at);
        *at += text.size() + 1;
        return text;
    }
    std::size_t Size() const { return m_size; }

  private:
    bool Grow(std::size_t more) {
        const std::size_t room = (m_room + more) * 2;
        Owned<char> larger(static_cast<char*>(Allocate(room)));
        if (!larger.Get()) return false;
        if (m_size) std::memcpy(larger.Get(), m_bytes.Get(), m_size);
        m_bytes.Reset(larger.Take());
        m_room = room;
        return true;
    }

    Owned<char> m_bytes;
    std::size_t m_size = 0, m_room = 0;
};

// Collects names and texts in turn. Returns false if allocation fails.
bool CollectValues(const Place& place, TextRow* row) {
    StoreRun run(StoreQuery::kList);
    run.Bind(1, place.Key());
    while (run.Row())
        if (!row->Add(run.Text(0)) || !row->Add(run.Text(1))) return false;
    return true;
}

}  // namespace

bool ReadRegistryValue(const char* key, const char* name, char* out, std::size_t size) {
    const Place place(key, name);
    if (!place.IsValid()) return false;
    char text[kLongestText];
    return FetchValue(place, text) && StoreInCodeSet(text, out, size);
}

void VisitRegistryValues(const char* key, std::size_t size,
                         void (*visit)(void* context, const char* name, const char* text),
                         void* context) {
    const Place place(key, "");
    const Owned<char> memory(static_cast<char*>(Allocate(std::uint64_t{size} * 2)));
    if (!AssertAllocation(memory.Get() != nullptr, "osutil/osconfig", __LINE__) || !place.IsValid())
        return;
    char *name = memory.Get(), *text = name + size;
    TextRow row;
    const bool collected = CollectValues(place, &row);
    if (!AssertAllocation(collected, "osutil/osconfig", __LINE__)) return;
    for (std::size_t at = 0; at < row.Size();) {
        if (!StoreInCodeSet(row.Next(&at), name, size)) return;
        if (!StoreInCodeSet(row.Next(&at), text, size)) return;
        visit(context, name, text);
    }
}

bool WriteRegistryValue(const char* key, const char* name, const char* text) {
    const Place place(key, name);
    const StoreText shown(name, StoreText::kAsIs), data(text, StoreText::kAsIs);
    if (!place.IsValid() || !shown.IsMade() || !data.IsMade()) return false;
    StoreRun run(StoreQuery::kWrite);
    run.Bind(1, place.Key());
    run.Bind(2, place.Name());
    run.Bind(3, shown.Get());
    run.Bind(4, data.Get());
    run.Row();
    return run.IsDone();
}

bool RemoveRegistryValue(const char* key, const char* name) {
    const Place place(key, name);
    if (!place.IsValid()) return false;
    StoreRun run(StoreQuery::kRemove);
    run.Bind(1, place.Key());
    run.Bind(2, place.Name());
    run.Row();
    return run.IsDone() && run.Changes() > 0;
}

}  // namespace genutil::platform
