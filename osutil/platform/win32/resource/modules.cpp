// Modules loaded by Windows.
#include "osutil/platform/resource/modules.h"

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

const char* const kFolderSeparators = "\\";

namespace {

HMODULE AsHandle(Module module) {
    return static_cast<HMODULE>(module);
}

// Suppresses the message box for a file that is not a library.
class QuietErrors {
  public:
    QuietErrors() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &m_mode); }
    ~QuietErrors() { SetThreadErrorMode(m_mode, nullptr); }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

  private:
    DWORD m_mode = 0;
};

}  // namespace

// Loads a library as a module, so that its handle is valid for every function of the system, or as
// data if it is a 64-bit one, whose resources can still be read.
Module LoadResourceLibrary(const char* path) {
    const QuietErrors quiet;
    const SystemPath file(path);
    if (!file.Get()) return nullptr;
    HMODULE module = LoadLibraryExW(file.Get(), nullptr, 0);
    if (!module && GetLastError() == ERROR_BAD_EXE_FORMAT)
        module = LoadLibraryExW(file.Get(), nullptr,
                                LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    return module;
}

void FreeResourceLibrary(Module module) {
    FreeLibrary(AsHandle(module));
}

const unsigned short* FindModuleString(Module module, unsigned id, std::size_t* count) {
    // With a buffer size of 0, the text is not copied. A pointer to it is returned.
    const unsigned short* text = nullptr;
    const int length =
        LoadStringW(AsHandle(module), id & 0xFFFF, reinterpret_cast<wchar_t*>(&text), 0);
    *count = static_cast<std::size_t>(length);
    return length > 0 ? text : nullptr;
}

CGNString ModuleFile(Module module) {
    wchar_t path[1024];
    const DWORD length = GetModuleFileNameW(AsHandle(module), path, 1024);
    if (length == 0 || length >= 1024) return "";
    return NameText(path).Get();
}

unsigned char* ReadVersionResource(const char* path, std::size_t* size) {
    const SystemPath file(path);
    const DWORD needed = file.Get() ? GetFileVersionInfoSizeW(file.Get(), nullptr) : 0;
    // Twice the size, because the system stores translated texts after the resource.
    if (needed == 0) return nullptr;
    void* const memory = Allocate(std::uint64_t{needed} * 2);
    if (!AssertAllocation(memory != nullptr, "osutil/osresdll", __LINE__)) return nullptr;
    if (!GetFileVersionInfoW(file.Get(), 0, needed * 2, memory)) {
        Release(memory);
        return nullptr;
    }
    *size = needed;
    return static_cast<unsigned char*>(memory);
}

}  // namespace genutil::platform
