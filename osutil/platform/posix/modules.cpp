// Modules on Linux: resource libraries are read into memory, and files of programs and libraries
// are known to the loader.
#include "osutil/platform/modules.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>

#include "genutil/allocate.h"
#include "genutil/mbutil/code_set.h"
#include "osutil/platform/posix/paths.h"
#include "osutil/resource_file.h"

namespace genutil::platform {

const char* const kFolderSeparators = "\\/";

namespace {

// A file as the system tells it from others, and in the state in which it was read.
struct FileIdentity {
    dev_t device;
    ino_t number;
    off_t size;
    timespec changed;

    bool operator==(const FileIdentity& other) const {
        return device == other.device && number == other.number && size == other.size &&
               changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
    }
};

FileIdentity IdentityOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim};
}

class OpenFile {
  public:
    explicit OpenFile(const char* path) : m_file(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        if (m_file < 0 || fstat(m_file, &m_status) != 0 || !S_ISREG(m_status.st_mode))
            m_size = -1;
        else
            m_size = m_status.st_size;
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (m_file >= 0) close(m_file);
    }

    bool IsRegular() const { return m_size >= 0; }
    FileIdentity Identity() const { return IdentityOf(m_status); }
    std::size_t Size() const { return static_cast<std::size_t>(m_size); }

    // All of it, for the caller to release; null when it cannot be read or is being cut short. It
    // is not mapped, because who cuts a mapped file short ends the programs that read it.
    unsigned char* ReadAll() const {
        auto* bytes = m_size > 0 ? static_cast<unsigned char*>(Allocate(Size())) : nullptr;
        for (off_t at = 0; bytes && at < m_size;) {
            const ssize_t count =
                pread(m_file, bytes + at, Size() - static_cast<std::size_t>(at), at);
            if (count > 0) {
                at += count;
            } else if (count == 0 || errno != EINTR) {
                Release(bytes);
                return nullptr;
            }
        }
        return bytes;
    }

  private:
    int m_file;
    struct stat m_status;
    off_t m_size;
};

// A library in memory. Records are kept for good and used again, so that an address can be told to
// be none that is loaded without touching it, and without a lock.
struct LoadedModule {
    std::atomic<int> uses{0};
    FileIdentity file{};
    unsigned char* bytes = nullptr;
    std::string path;
    ResourceStrings strings;
    LoadedModule* next = nullptr;
};

std::atomic<LoadedModule*> g_modules{nullptr};
std::mutex g_modulesLock;  // of what changes

LoadedModule* FindModule(Module module) {
    LoadedModule* loaded = g_modules.load(std::memory_order_acquire);
    while (loaded && loaded != module) loaded = loaded->next;
    return loaded && loaded->uses.load(std::memory_order_acquire) > 0 ? loaded : nullptr;
}

LoadedModule* FindModule(const FileIdentity& file) {
    LoadedModule* loaded = g_modules.load(std::memory_order_relaxed);
    while (loaded && !(loaded->uses > 0 && loaded->file == file)) loaded = loaded->next;
    return loaded;
}

// A record that is not in use; null without memory.
LoadedModule* UnusedModule() {
    LoadedModule* loaded = g_modules.load(std::memory_order_relaxed);
    while (loaded && loaded->uses > 0) loaded = loaded->next;
    if (loaded) return loaded;
    loaded = New<LoadedModule>();
    if (!loaded) return nullptr;
    loaded->next = g_modules.load(std::memory_order_relaxed);
    g_modules.store(loaded, std::memory_order_release);
    return loaded;
}

Module LoadFile(const std::string& path) {
    const OpenFile file(path.c_str());
    if (!file.IsRegular()) return nullptr;
    const std::lock_guard lock(g_modulesLock);
    if (LoadedModule* loaded = FindModule(file.Identity())) {
        ++loaded->uses;
        return loaded;
    }
    LoadedModule* loaded = UnusedModule();
    if (!loaded) return nullptr;
    unsigned char* bytes = file.ReadAll();
    ResourceFile resources;
    if (!bytes || !resources.Open({bytes, file.Size()}) ||
        !loaded->strings.Fill(resources, UserLanguage())) {
        Release(bytes);
        return nullptr;
    }
    loaded->file = file.Identity();
    loaded->bytes = bytes;
    loaded->path = path;
    loaded->uses.store(1, std::memory_order_release);
    return loaded;
}

// An absolute path without links; the path itself where there is no such file.
std::string RealPath(const char* path) {
    char* real = realpath(path, nullptr);
    const std::string result(real ? real : path);
    std::free(real);
    return result;
}

std::string ProgramFile() {
    return RealPath("/proc/self/exe");
}

// The file of what dlopen gave; empty when it is none. Handles are compared with those that there
// are, because one that is none must not be looked into.
std::string FileOfHandle(Module module) {
    std::string path;
    void* program = dlopen(nullptr, RTLD_LAZY);
    if (!program) return path;
    for (const auto* map = static_cast<const link_map*>(program); map; map = map->l_next)
        if (map == module) path = *map->l_name ? RealPath(map->l_name) : ProgramFile();
    dlclose(program);
    return path;
}

std::string SystemFile(Module module) {
    if (!module) return ProgramFile();
    {
        const std::lock_guard lock(g_modulesLock);
        if (const LoadedModule* loaded = FindModule(module)) return RealPath(loaded->path.c_str());
    }
    const std::string path = FileOfHandle(module);
    Dl_info info;
    if (path.empty() && dladdr(module, &info) && info.dli_fname) return RealPath(info.dli_fname);
    return path;
}

}  // namespace

Module LoadResourceLibrary(const char* path) {
    const SystemPath system(path);
    if (!system.Get()) return nullptr;
    std::string file = system.Get();
    const std::size_t name = file.find_last_of('/') + 1;
    if (file.find('.', name) == std::string::npos) file += ".dll";
    if (name == 0) {
        const std::string program = ProgramFile();
        if (Module module = LoadFile(program.substr(0, program.find_last_of('/') + 1) + file))
            return module;
    }
    return LoadFile(file);
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
    return reinterpret_cast<const unsigned short*>(text.units);  // little-endian, as this machine
}

CGNString ModuleFile(Module module) {
    return NameText(SystemFile(module).c_str()).Get();
}

unsigned char* ReadVersionResource(const char* path, std::size_t* size) {
    const SystemPath system(path);
    const OpenFile file(system.Get() ? system.Get() : "");
    const Owned<unsigned char> bytes(file.IsRegular() ? file.ReadAll() : nullptr);
    ResourceFile resources;
    if (!bytes.Get() || !resources.Open({bytes.Get(), file.Size()})) return nullptr;
    const Bytes version = resources.FindVersion(UserLanguage());
    *size = version.Size();
    void* copy = version.Size() ? Allocate(version.Size()) : nullptr;
    return copy ? static_cast<unsigned char*>(std::memcpy(copy, version.Data(), version.Size()))
                : nullptr;
}

}  // namespace genutil::platform
