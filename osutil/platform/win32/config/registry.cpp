// The registry of Windows.
#include "osutil/platform/config/registry.h"

#include <cstring>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osutil/platform/win32/scoped_handle.h"

namespace genutil::platform {

namespace {

const HKEY kRoot = HKEY_CURRENT_USER;

class Key : public ScopedKey {
  public:
    Key(const char* path, REGSAM rights) : ScopedKey(kRoot, path, rights) {}
    bool Create(const char* path) {
        char keyClass[] = "REG_SZ";
        if (RegCreateKeyExA(kRoot, path, 0, keyClass, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                            nullptr, Place(), nullptr) != ERROR_SUCCESS)
            *Place() = nullptr;
        return Get() != nullptr;
    }
};

}  // namespace

bool ReadRegistryValue(const char* key, const char* name, char* out, std::size_t size) {
    const Key opened(key, KEY_READ);
    auto length = static_cast<DWORD>(size);
    if (!opened.Get() || RegQueryValueExA(opened.Get(), name, nullptr, nullptr,
                                          reinterpret_cast<BYTE*>(out), &length) != ERROR_SUCCESS)
        return false;
    if (length < size) out[length] = 0;  // not every value has a terminator
    return std::memchr(out, 0, size) != nullptr;
}

void VisitRegistryValues(const char* key, std::size_t size,
                         void (*visit)(void* context, const char* name, const char* text),
                         void* context) {
    const Key opened(key, KEY_QUERY_VALUE);
    if (!opened.Get()) return;
    const Owned<char> name(static_cast<char*>(Allocate(size)));
    const Owned<char> text(static_cast<char*>(Allocate(size + 1)));
    if (!AssertAllocation(name.Get() && text.Get(), "osutil/osconfig", __LINE__)) return;
    for (DWORD index = 0;; ++index) {
        auto nameLength = static_cast<DWORD>(size), length = nameLength;
        if (RegEnumValueA(opened.Get(), index, name.Get(), &nameLength, nullptr, nullptr,
                          reinterpret_cast<BYTE*>(text.Get()), &length) != ERROR_SUCCESS)
            return;
        text.Get()[length] = 0;
        visit(context, name.Get(), text.Get());
    }
}

bool WriteRegistryValue(const char* key, const char* name, const char* text) {
    Key opened(key, KEY_WRITE);
    if (!opened.Get() && !opened.Create(key)) return false;
    return RegSetValueExA(opened.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                          static_cast<DWORD>(std::strlen(text) + 1)) == ERROR_SUCCESS;
}

bool RemoveRegistryValue(const char* key, const char* name) {
    const Key opened(key, KEY_ALL_ACCESS);
    return opened.Get() && RegDeleteValueA(opened.Get(), name) == ERROR_SUCCESS;
}

}  // namespace genutil::platform
