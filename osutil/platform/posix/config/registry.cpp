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

}  // namespace

bool ReadRegistryValue(const char* key, const char* name, char* out, std::size_t size) {
    const Place place(key, name);
    if (!place.IsValid()) return false;
    StoreRun run(StoreQuery::kRead);
    run.Bind(1, place.Key());
    run.Bind(2, place.Name());
    return run.Row() && StoreInCodeSet(run.Text(0), out, size);
}

void VisitRegistryValues(const char* key, std::size_t size,
                         void (*visit)(void* context, const char* name, const char* text),
                         void* context) {
    const Place place(key, "");
    const Owned<char> memory(static_cast<char*>(Allocate(std::uint64_t{size} * 2)));
    if (!AssertAllocation(memory.Get() != nullptr, "osutil/osconfig", __LINE__) || !place.IsValid())
        return;
    char *name = memory.Get(), *text = name + size;
    StoreRun run(StoreQuery::kList);
    run.Bind(1, place.Key());
    while (run.Row() && StoreInCodeSet(run.Text(0), name, size) &&
           StoreInCodeSet(run.Text(1), text, size))
        visit(context, name, text);
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
