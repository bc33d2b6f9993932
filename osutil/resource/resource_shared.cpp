// The resource libraries that threads share. They are loaded once, counted, and freed after the
// last use.
//
// A lookup and the change of the count it finds are one step. Under the read lock, counts only
// increase. Under the write lock they decrease, and entries are added and removed. A library is
// also loaded under the write lock, so that threads which request the same one concurrently load it
// once.
#include <atomic>
#include <new>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/atomic_ref.h"
#include "osresource.h"
#include "osthread.h"
#include "osutil/resource/resource_state.h"
#include "osutil/thread/threaded.h"

using namespace genutil;
using platform::Module;

namespace {

struct Entry {
    Entry(const char* name, Module loaded) : file(name), module(loaded), count(1) {}
    CGNString file;
    Module module;
    std::int32_t count;
};

constexpr long kVariables = 256;  // capacity for a thread that has no variables yet
constexpr char kSource[] = "osutil/osresdll";

// Never destroyed, because threads may still run while the process ends.
CGNList& ReshandleLookupList() {
    alignas(CGNList) static unsigned char memory[sizeof(CGNList)];
    static CGNList& list = *new (memory) CGNList(0, 10);
    return list;
}

// Returns the lock of the list, created by the first attach, or null if allocation fails. A lock
// created before the process became threaded does not protect it, so there are two.
_osrdwr* ListLock() {
    static std::atomic<_osrdwr*> locks[2];
    std::atomic<_osrdwr*>& lock = locks[IsThreaded() ? 1 : 0];
    if (_osrdwr* made = lock.load(std::memory_order_acquire)) return made;
    _osrdwr* made = OSRWLockCreate();
    _osrdwr* other = nullptr;
    if (!made || lock.compare_exchange_strong(other, made)) return made;
    OSRWLockDestroy(made);
    return other;
}

template <class Matches>
int IndexOf(Matches matches) {
    const CGNList& list = ReshandleLookupList();
    for (int i = 0; i < list.GetCount(); ++i)
        if (matches(*reinterpret_cast<Entry*>(list.GetItem(i)))) return i;
    return -1;
}

Entry* EntryAt(int index) {
    return index < 0 ? nullptr : reinterpret_cast<Entry*>(ReshandleLookupList().GetItem(index));
}

// Returns the module and increments its count.
Module FindShared(const char* file) {
    Entry* entry = EntryAt(IndexOf([=](const Entry& e) { return e.file == file; }));
    if (!entry) return nullptr;
    AtomicRef<std::int32_t>(entry->count).fetch_add(1, std::memory_order_relaxed);
    return entry->module;
}

Module LoadShared(const char* file) {
    const Module module = platform::LoadResourceLibrary(file);
    if (!module) return nullptr;
    auto* entry = New<Entry>(file, module);
    AssertAllocation(entry != nullptr, kSource, __LINE__);
    if (entry && ReshandleLookupList().AddItem(reinterpret_cast<GNItem>(entry))) return module;
    delete entry;
    platform::FreeResourceLibrary(module);
    return nullptr;
}

Module AttachShared(const char* file) {
    _osrdwr* lock = ListLock();
    if (!file || !lock) return nullptr;
    OSRWLockReadWait(lock);
    Module module = FindShared(file);
    OSRWLockReadRelease(lock);
    if (module) return module;
    OSRWLockWriteWait(lock);
    module = FindShared(file);  // another thread may have loaded it
    if (!module) module = LoadShared(file);
    OSRWLockWriteRelease(lock);
    return module;
}

void ReleaseShared(Module module) {
    _osrdwr* lock = ListLock();
    if (!lock) return;
    OSRWLockWriteWait(lock);
    const int index = IndexOf([=](const Entry& e) { return e.module == module; });
    Entry* entry = EntryAt(index);
    if (entry && --entry->count < 1) {
        ReshandleLookupList().DeleteItem(index);
        platform::FreeResourceLibrary(module);
        NoteResourceChange();
        delete entry;
    }
    OSRWLockWriteRelease(lock);
}

// The store does not overwrite a variable, so an existing one is removed first.
bool SetThreadLibrary(Module module) {
    CGNLclSt* variables = ThreadVariables();
    if (!variables || !variables->Init(kVariables)) return false;
    variables->UnsetLocalVariable(kThreadLibrary);
    return !module || variables->SetLocalVariable(kThreadLibrary, module) >= 0;
}

}  // namespace

GNItem OSAttachLocaleResDLLTS(const char* file) {
    const Module module = AttachShared(file);
    if (SetThreadLibrary(module)) return reinterpret_cast<GNItem>(module);
    if (module) ReleaseShared(module);
    return 0;
}

void OSDetachLocaleResDLLTS() {
    CGNLclSt* variables = ThreadVariables();
    const Module module = variables ? variables->GetLocalVariable(kThreadLibrary) : nullptr;
    if (!module) return;
    ReleaseShared(module);
    variables->UnsetLocalVariable(kThreadLibrary);
}
