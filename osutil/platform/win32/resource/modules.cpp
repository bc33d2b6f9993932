// Modules loaded by Windows.
//
// A library for a processor other than the program's is loaded as data. Windows maps such a file
// again for each call, does not know the file of its handle, and must not be called with a closed
// handle. These libraries are therefore recorded in a list. The lowest bits of their handles
// distinguish them from those of modules, where these bits are 0.
#include "osutil/platform/resource/modules.h"

#include <cstdint>
#include <cwchar>

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

constexpr DWORD kLongestPath = 1024;
constexpr char kSource[] = "osutil/osresdll";

struct DataModule {
    wchar_t path[kLongestPath];
    HMODULE handle;
    int uses;
    DataModule* next;
};

DataModule* g_dataModules = nullptr;
SRWLOCK g_dataLock = SRWLOCK_INIT;  // guards the list

class SharedDataLock {
  public:
    SharedDataLock() { AcquireSRWLockShared(&g_dataLock); }
    ~SharedDataLock() { ReleaseSRWLockShared(&g_dataLock); }
    SharedDataLock(const SharedDataLock&) = delete;
    SharedDataLock& operator=(const SharedDataLock&) = delete;
};

class DataLock {
  public:
    DataLock() { AcquireSRWLockExclusive(&g_dataLock); }
    ~DataLock() { ReleaseSRWLockExclusive(&g_dataLock); }
    DataLock(const DataLock&) = delete;
    DataLock& operator=(const DataLock&) = delete;
};

bool IsData(Module module) {
    return (reinterpret_cast<std::uintptr_t>(module) & 3) != 0;
}

// Returns the position of the link to a matching entry, or of the final null link if there is none.
template <class Matches>
DataModule** FindData(Matches matches) {
    DataModule** link = &g_dataModules;
    while (*link && !matches(**link)) link = &(*link)->next;
    return link;
}
DataModule** FindData(Module module) {
    return FindData([=](const DataModule& data) { return data.handle == module; });
}

Module LoadData(const wchar_t* file) {
    Owned<DataModule> made(static_cast<DataModule*>(Allocate(sizeof(DataModule))));
    if (!AssertAllocation(made.Get() != nullptr, kSource, __LINE__)) return nullptr;
    const DWORD length =
        SearchPathW(nullptr, file, L".dll", kLongestPath, made.Get()->path, nullptr);
    if (length == 0 || length >= kLongestPath) return nullptr;
    const DataLock lock;
    const wchar_t* const path = made.Get()->path;
    if (DataModule* data = *FindData([=](const DataModule& d) {
            return CompareStringOrdinal(d.path, -1, path, -1, TRUE) == CSTR_EQUAL;
        })) {
        ++data->uses;
        return data->handle;
    }
    made.Get()->handle = LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (!made.Get()->handle) return nullptr;
    made.Get()->uses = 1;
    made.Get()->next = g_dataModules;
    g_dataModules = made.Take();
    return g_dataModules->handle;
}

void FreeData(Module module) {
    const DataLock lock;
    DataModule** const link = FindData(module);
    DataModule* const data = *link;
    if (!data || --data->uses > 0) return;
    *link = data->next;
    FreeLibrary(data->handle);
    Release(data);
}

// With a buffer size of 0, the text is not copied. A pointer to it is returned.
const unsigned short* FindString(HMODULE module, unsigned id, std::size_t* count) {
    const unsigned short* text = nullptr;
    const int length = LoadStringW(module, id & 0xFFFF, reinterpret_cast<wchar_t*>(&text), 0);
    *count = static_cast<std::size_t>(length);
    return length > 0 ? text : nullptr;
}

}  // namespace

// Loads a library as a module of the program's kind if possible, so that its handle is valid for
// every function of the system.
Module LoadResourceLibrary(const char* path) {
    const QuietErrors quiet;
    const SystemPath file(path);
    if (!file.Get()) return nullptr;
    if (const HMODULE module = LoadLibraryExW(file.Get(), nullptr, 0)) return module;
    return GetLastError() == ERROR_BAD_EXE_FORMAT ? LoadData(file.Get()) : nullptr;
}

void FreeResourceLibrary(Module module) {
    if (IsData(module))
        FreeData(module);
    else
        FreeLibrary(AsHandle(module));
}

const unsigned short* FindModuleString(Module module, unsigned id, std::size_t* count) {
    if (!IsData(module)) return FindString(AsHandle(module), id, count);
    const SharedDataLock lock;
    return *FindData(module) ? FindString(AsHandle(module), id, count) : nullptr;
}

CGNString ModuleFile(Module module) {
    if (IsData(module)) {
        const SharedDataLock lock;
        const DataModule* data = *FindData(module);
        return data ? NameText(data->path).Get() : "";
    }
    wchar_t path[kLongestPath];
    const DWORD length = GetModuleFileNameW(AsHandle(module), path, kLongestPath);
    if (length == 0 || length >= kLongestPath) return "";
    return NameText(path).Get();
}

unsigned char* ReadVersionResource(const char* path, std::size_t* size) {
    const SystemPath file(path);
    const DWORD needed = file.Get() ? GetFileVersionInfoSizeW(file.Get(), nullptr) : 0;
    // Twice the size, because the system stores translated texts after the resource.
    if (needed == 0) return nullptr;
    void* const memory = Allocate(std::uint64_t{needed} * 2);
    if (!AssertAllocation(memory != nullptr, kSource, __LINE__)) return nullptr;
    if (!GetFileVersionInfoW(file.Get(), 0, needed * 2, memory)) {
        Release(memory);
        return nullptr;
    }
    *size = needed;
    return static_cast<unsigned char*>(memory);
}

}  // namespace genutil::platform
