// The resource libraries of the process, and the texts in them.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <utility>

#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "mbutil.h"
#include "osresource.h"
#include "osthread.h"
#include "osutil/resource/resource_state.h"
#include "osutil/resource/resource_table.h"

using namespace genutil;
using platform::Module;

static_assert(sizeof(GNItem) == sizeof(void*), "a handle holds a pointer");

namespace genutil {

Module ResourceTable::Place(Module module) {
    return std::exchange(slots[0], module);
}

bool ResourceTable::Remove(Module module) {
    int i = 0;
    while (i < kSlots && slots[i] != module && slots[i]) ++i;
    ++i;  // the slot after the one where the search ended
    if (i >= kSlots || !module || slots[i] != module) return false;
    for (; i + 1 < kSlots && slots[i + 1]; ++i) slots[i] = slots[i + 1];
    slots[i] = nullptr;
    return true;
}

CGNLclSt* ThreadVariables() {
    // Its first Instance() is not synchronised.
    static const bool isMade = CGNLclSt::Instance() != nullptr;
    return isMade ? CGNLclSt::Instance() : nullptr;
}

namespace {

constinit ResourceTable g_table;
std::atomic<std::uint32_t> g_changes{0};

Module ThreadLibrary() {
    CGNLclSt* variables = ThreadVariables();
    return variables ? variables->GetLocalVariable(kThreadLibrary) : nullptr;
}

}  // namespace

ResourceState CurrentResourceState() {
    return {g_changes.load(std::memory_order_acquire), ThreadLibrary()};
}

void NoteResourceChange() {
    g_changes.fetch_add(1, std::memory_order_acq_rel);
}

}  // namespace genutil

namespace {

GNItem HandleOf(Module module) {
    return reinterpret_cast<GNItem>(module);
}
Module ModuleOf(GNItem handle) {
    return reinterpret_cast<Module>(handle);
}

GNItem Attach(const char* path) {
    const Module module = platform::LoadResourceLibrary(path);
    if (!module) return 0;
    g_table.Place(module);
    NoteResourceChange();
    return HandleOf(module);
}

// Stores the directory of a module without its trailing separator; empty for a root. Returns false
// if it is not a module.
bool FindFolder(Module module, CGNString& file) {
    constexpr unsigned kMostOfPath = 200;
    file = platform::ModuleFile(module);
    if (file.IsEmpty()) return false;
    if (file.GetLength() > kMostOfPath)
        StringStorage::Store(file, file, 0, mbidx(file, kMostOfPath));
    const char* const text = file;
    const char* cut = text;
    for (const char* separator = platform::kFolderSeparators; *separator; ++separator) {
        const char* last = mbstrrchr(text, *separator);
        if (last && last > cut) cut = last;
    }
    StringStorage::Store(file, text, 0, static_cast<std::size_t>(cut - text));
    return true;
}

CGNString PathOf(const CGNString& folder, unsigned language, const char* file) {
    CGNString path = folder;
    char name[40];
    std::snprintf(name, sizeof name, "\\ResDLLs\\%04x\\", language);
    path += name;
    path += file;
    return path;
}

constexpr std::size_t kMostOfText = 2047;  // programs have a buffer of 2048 bytes for a text

// Converts the text of `count` characters, up to its first 0, to the current code set. Returns its
// length in bytes. Most texts begin with ASCII, which is the same in all code sets; the blocks are
// independent of each other.
std::size_t NarrowText(const unsigned short* wide, std::size_t count, char* out) {
    constexpr std::size_t kBlock = 8;
    if (count > kMostOfText) count = kMostOfText;
    std::size_t at = 0;
    while (count - at >= kBlock &&
           NarrowAscii8(reinterpret_cast<const unsigned char*>(wide + at),
                        reinterpret_cast<unsigned char*>(out + at)) == kBlock)
        at += kBlock;
    for (; at != count && wide[at] < 0x80; ++at) out[at] = static_cast<char>(wide[at]);
    if (const void* end = std::memchr(out, 0, at))
        return static_cast<std::size_t>(static_cast<const char*>(end) - out);
    if (at == count) return at;
    const unsigned short* const rest = wide + at;
    const auto size = static_cast<std::size_t>(std::find(rest, wide + count, 0) - rest);
    return at + static_cast<std::size_t>(ToNarrowLossy(out + at, kMostOfText - at, rest, size));
}

}  // namespace

GNItem OSAttachLocaleResDLL(const char* file) {
    return file ? Attach(file) : 0;
}

GNItem OSAttachLocaleResDLL(GNItem module, const char* file, CGNString& path,
                            unsigned int language) {
    constexpr unsigned kEnglish = 0x09;
    CGNString folder;
    if (!file || !FindFolder(ModuleOf(module), folder)) return 0;
    if (language == 0) language = UserLanguage();
    const CGNString wanted = PathOf(folder, language, file);
    GNItem handle = Attach(wanted);
    if (!handle) handle = Attach(PathOf(folder, PrimaryLanguage(language), file));
    if (!handle) handle = Attach(PathOf(folder, kEnglish, file));
    if (handle) path = wanted;
    return handle;
}

void OSDetachLocaleResDLL(GNItem handle) {
    if (!g_table.Remove(ModuleOf(handle))) return;
    platform::FreeResourceLibrary(ModuleOf(handle));
    NoteResourceChange();
}

GNItem OSSetResourceHandle(GNItem handle) {
    const Module before = g_table.Place(ModuleOf(handle));
    NoteResourceChange();
    return HandleOf(before);
}

int OSLoadString(CGNString& text, long id) {
    const auto number = static_cast<unsigned>(id);
    const unsigned short* wide = nullptr;
    std::size_t count = 0;
    if (const Module own = ThreadLibrary()) {
        wide = platform::FindModuleString(own, number, &count);
    } else {
        for (const Module module : g_table.slots) {
            wide = platform::FindModuleString(module, number, &count);
            if (wide || !module) break;
        }
    }
    if (!wide) return 0;
    char bytes[kMostOfText + 1];
    const std::size_t length = NarrowText(wide, count, bytes);
    return StringStorage::Put(text, bytes, length) ? static_cast<int>(length) : 0;
}

int OSLangIDToFontCharSet(long language) {
    constexpr unsigned kChinese = 0x04;
    constexpr int kSimplified = 134, kTraditional = 136;
    static constexpr struct {
        unsigned primary;
        int characterSet;
    } kSets[] = {{0x02, 204}, {0x19, 204}, {0x05, 238}, {0x0E, 238}, {0x15, 238}, {0x18, 238},
                 {0x1B, 238}, {0x24, 238}, {0x08, 161}, {0x11, 128}, {0x12, 129}, {0x1F, 162}};
    const unsigned primary = PrimaryLanguage(static_cast<unsigned>(language));
    const unsigned country = static_cast<unsigned>(language) >> 10 & 0x3F;
    if (primary == kChinese) return country == 2 || country == 4 ? kSimplified : kTraditional;
    for (const auto& set : kSets)
        if (set.primary == primary) return set.characterSet;
    return 0;
}
