// Modules on Linux. Resource libraries are read into memory. The files of programs and libraries
// are known to the loader.
#include "osutil/platform/resource/modules.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/mbutil/code_set.h"
#include "osutil/platform/posix/file/descriptor.h"
#include "osutil/platform/posix/file/file_state.h"
#include "osutil/platform/posix/file/paths.h"
#include "osutil/resource/resource_file.h"

namespace genutil::platform {

const char* const kFolderSeparators = "\\/";

namespace {

constexpr char kSource[] = "osutil/osresdll";

class OpenFile {
  public:
    explicit OpenFile(const char* path) : m_file(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        const bool isRegular = m_file.IsOpen() && fstat(m_file.Get(), &m_status) == 0 &&
                               S_ISREG(m_status.st_mode) && m_status.st_size <= INT32_MAX;
        m_size = isRegular ? m_status.st_size : -1;
    }

    bool IsRegular() const { return m_size >= 0; }
    // The permissions and names of a file may change while it is loaded.
    FileState Identity() const {
        FileState state = FileState::Of(m_status);
        state.changed = 0;
        return state;
    }
    std::size_t Size() const { return static_cast<std::size_t>(m_size); }

    // Reads the whole file. The caller releases the memory. Returns null if the file cannot be
    // read, is being truncated or does not begin as a program does. It is not mapped, because
    // truncating a mapped file crashes the programs that read it.
    unsigned char* ReadAll() const {
        char mark[2];
        if (m_size <= 0 || !ReadExactly(m_file.Get(), 0, mark, sizeof mark) ||
            std::memcmp(mark, "MZ", sizeof mark) != 0)
            return nullptr;
        Owned<unsigned char> bytes(static_cast<unsigned char*>(Allocate(Size())));
        const bool good = AssertAllocation(bytes.Get() != nullptr, kSource, __LINE__) &&
                          ReadExactly(m_file.Get(), 0, bytes.Get(), Size());
        return good ? bytes.Take() : nullptr;
    }

  private:
    OpenDescriptor m_file;
    struct stat m_status;
    off_t m_size;
};

// A library in memory. Records are never freed but reused, so that an address can be compared with
// all records without dereferencing it and without a lock.
struct LoadedModule {
    std::atomic<int> uses{0};
    FileState file{};
    unsigned char* bytes = nullptr;
    char path[PATH_MAX];
    ResourceStrings strings;
    LoadedModule* next = nullptr;
};

std::atomic<LoadedModule*> g_modules{nullptr};
std::mutex g_modulesLock;  // for changes

LoadedModule* FindModule(Module module) {
    LoadedModule* loaded = g_modules.load(std::memory_order_acquire);
    while (loaded && loaded != module) loaded = loaded->next;
    return loaded && loaded->uses.load(std::memory_order_acquire) > 0 ? loaded : nullptr;
}

LoadedModule* FindModule(const FileState& file) {
    LoadedModule* loaded = g_modules.load(std::memory_order_relaxed);
    while (loaded && !(loaded->uses > 0 && loaded->file == file)) loaded = loaded->next;
    return loaded;
}

// Returns an unused record, or null if allocation fails.
LoadedModule* UnusedModule() {
    LoadedModule* loaded = g_modules.load(std::memory_order_relaxed);
    while (loaded && loaded->uses > 0) loaded = loaded->next;
    if (loaded) return loaded;
    loaded = New<LoadedModule>();
    if (!AssertAllocation(loaded != nullptr, kSource, __LINE__)) return nullptr;
    loaded->next = g_modules.load(std::memory_order_relaxed);
    g_modules.store(loaded, std::memory_order_release);
    return loaded;
}

// Returns the absolute path without links, or false if there is none.
bool RealPath(const char* path, char (&out)[PATH_MAX]) {
    return realpath(path, out) != nullptr;
}

bool ProgramFile(char (&out)[PATH_MAX]) {
    return RealPath("/proc/self/exe", out);
}

Module LoadFile(const char* path) {
    const OpenFile file(path);
    if (!file.IsRegular()) return nullptr;
    const std::lock_guard lock(g_modulesLock);
    if (LoadedModule* loaded = FindModule(file.Identity())) {
        ++loaded->uses;
        return loaded;
    }
    LoadedModule* loaded = UnusedModule();
    if (!loaded || !RealPath(path, loaded->path)) return nullptr;
    unsigned char* bytes = file.ReadAll();
    ResourceFile resources;
    if (!bytes || !resources.Open({bytes, file.Size()}) ||
        !AssertAllocation(loaded->strings.Fill(resources, UserLanguage()), kSource, __LINE__)) {
        Release(bytes);
        return nullptr;
    }
    loaded->file = file.Identity();
    loaded->bytes = bytes;
    loaded->uses.store(1, std::memory_order_release);
    return loaded;
}

// The program itself has an empty name in the map.
bool FileOfMap(const link_map& map, char (&out)[PATH_MAX]) {
    return *map.l_name ? RealPath(map.l_name, out) : ProgramFile(out);
}

// Finds the file of a handle from dlopen. Returns false if it is not a handle. It is compared with
// the existing handles, because an invalid one must not be dereferenced.
bool FileOfHandle(Module module, char (&out)[PATH_MAX]) {
    void* const program = dlopen(nullptr, RTLD_LAZY);
    if (!program) return false;
    const auto* map = static_cast<const link_map*>(program);
    while (map && map != module) map = map->l_next;
    const bool found = map && FileOfMap(*map, out);
    dlclose(program);
    return found;
}

bool FileOfModule(Module module, char (&out)[PATH_MAX]) {
    if (!module) return ProgramFile(out);
    {
        const std::lock_guard lock(g_modulesLock);
        if (const LoadedModule* loaded = FindModule(module)) {
            std::memcpy(out, loaded->path, sizeof out);
            return true;
        }
    }
    Dl_info info;
    link_map* map = nullptr;
    return FileOfHandle(module, out) ||
           (dladdr1(module, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) && map &&
            FileOfMap(*map, out));
}

// Loads a file in a directory, whose path ends in "/" or is empty.
Module LoadFrom(const char* folder, std::size_t length, const char* name) {
    char path[PATH_MAX];
    const int size = std::snprintf(path, sizeof path, "%.*s%s%s", static_cast<int>(length), folder,
                                   name, std::strchr(name, '.') ? "" : ".dll");
    return *name && size < PATH_MAX ? LoadFile(path) : nullptr;
}

}  // namespace

Module LoadResourceLibrary(const char* path) {
    const SystemPath file(path);
    if (!file.Get()) return nullptr;
    if (const char* slash = std::strrchr(file.Get(), '/')) {
        const char* const name = slash + 1;
        return LoadFrom(file.Get(), static_cast<std::size_t>(name - file.Get()), name);
    }
    char program[PATH_MAX];
    if (ProgramFile(program)) {
        const char* const name = std::strrchr(program, '/') + 1;
        const Module module =
            LoadFrom(program, static_cast<std::size_t>(name - program), file.Get());
        if (module) return module;
    }
    return LoadFrom("", 0, file.Get());
}

void FreeResourceLibrary(Module module) {
    const std::lock_guard lock(g_modulesLock);
    LoadedModule* loaded = FindModule(module);
    if (!loaded || --loaded->uses > 0) return;
    Release(loaded->bytes);
    loaded->bytes = nullptr;
    loaded->strings.Clear();
}

const unsigned short* FindModuleString(Module module, unsigned id, std::size_t* count) {
    const LoadedModule* loaded = FindModule(module);
    ResourceText text;
    if (!loaded || !loaded->strings.Find(id & 0xFFFF, &text)) return nullptr;
    *count = text.count;
    return reinterpret_cast<const unsigned short*>(text.units);  // little-endian, like this machine
}

CGNString ModuleFile(Module module) {
    char path[PATH_MAX];
    return FileOfModule(module, path) ? NameText(path).Get() : "";
}

unsigned char* ReadVersionResource(const char* path, std::size_t* size) {
    const SystemPath system(path);
    const OpenFile file(system.Get() ? system.Get() : "");
    const Owned<unsigned char> bytes(file.IsRegular() ? file.ReadAll() : nullptr);
    ResourceFile resources;
    if (!bytes.Get() || !resources.Open({bytes.Get(), file.Size()})) return nullptr;
    const Bytes version = resources.FindVersion(UserLanguage());
    *size = version.Size();
    if (version.Size() == 0) return nullptr;
    void* const copy = Allocate(version.Size());
    if (!AssertAllocation(copy != nullptr, kSource, __LINE__)) return nullptr;
    return static_cast<unsigned char*>(std::memcpy(copy, version.Data(), version.Size()));
}

}  // namespace genutil::platform
