// CGNLclSt: thread variables by name.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/singleton.h"
#include "osthread.h"
#include "osutil/thread/thread_record.h"
#include "osutil/thread/thread_value.h"
#include "osutil/thread/threaded.h"

using namespace genutil;

namespace genutil {

// A variable with a release function, in a list of its thread.
struct ReleasedVariable {
    ReleasedVariable* next;
    CGNLclStSlot* slot;
    void (*release)(void*);
};

// The slots that a call uses; none if there is no table.
struct VariableTable {
    // Programs access the members of the process's store.
    static void CheckLayout() {
        constexpr std::size_t p = sizeof(void*);
        static_assert(sizeof(CGNLclSt) == 2 * p && offsetof(CGNLclSt, m_slots) == p);
        static_assert(sizeof(CGNLclStSlot) == 2 * p && offsetof(CGNLclStSlot, m_value) == p);
        static_assert(offsetof(CGNLclStTable, m_slots) == p);
    }

    bool exists;
    std::int32_t count;
    CGNLclStSlot* slots;

    static VariableTable Find(const CGNLclSt& object) {
        if (!IsThreaded()) return {object.m_slots != nullptr, object.m_count, object.m_slots};
        auto* table = static_cast<CGNLclStTable*>(ThreadValue());
        if (!table) return {false, 0, nullptr};
        return {true, table->m_count, table->m_slots};
    }

    CGNLclStSlot* begin() const { return slots; }
    CGNLclStSlot* end() const { return slots + count; }
    long IndexOf(const CGNLclStSlot* slot) const { return static_cast<long>(slot - slots); }

    CGNLclStSlot* At(long index) const {
        return index >= 0 && index < count ? slots + index : nullptr;
    }

    CGNLclStSlot* Named(const char* name) const {
        return FindInUse([=](const char* other) { return name && std::strcmp(other, name) == 0; });
    }
    // Same as above in a few instructions.
    CGNLclStSlot* Named(const ShortName& name) const {
        return FindInUse([&](const char* other) {
            return std::memcmp(other, name.text, sizeof name.text) == 0;
        });
    }

  private:
    // Tables have room for many variables and contain few, so free slots are skipped eight at a
    // time.
    template <class Matches>
    CGNLclStSlot* FindInUse(Matches matches) const {
        constexpr std::ptrdiff_t kStep = 8;
        for (CGNLclStSlot* slot = slots; slot != end();) {
            std::ptrdiff_t n = end() - slot;
            if (n >= kStep) {
                n = kStep;
                std::uintptr_t any = 0;
                for (std::ptrdiff_t i = 0; i < kStep; ++i)
                    any |= reinterpret_cast<std::uintptr_t>(slot[i].m_name);
                if (!any) slot += n, n = 0;
            }
            for (; n > 0; --n, ++slot)
                if (slot->m_name && matches(slot->m_name)) return slot;
        }
        return nullptr;
    }
};

void* ThreadVariable(const ShortName& name) {
    const CGNLclSt* variables = CGNLclSt::Instance();
    const CGNLclStSlot* slot = variables ? VariableTable::Find(*variables).Named(name) : nullptr;
    return slot ? slot->m_value : nullptr;
}

}  // namespace genutil

namespace {

constexpr char kSource[] = "osutil/oslclst";

// Allocates `header` bytes and a number of slots, zeroed. Returns null if allocation fails, and for
// a negative number.
void* NewSlots(std::size_t header, long count) {
    if (count < 0 || count > std::numeric_limits<std::int32_t>::max()) return nullptr;
    const std::uint64_t bytes = header + static_cast<std::uint64_t>(count) * sizeof(CGNLclStSlot);
    void* memory = Allocate(bytes);
    if (AssertAllocation(memory != nullptr, kSource, __LINE__))
        std::memset(memory, 0, static_cast<std::size_t>(bytes));
    return memory;
}

// Copies a name, padded with zeros to at least the size of a short name, so that such a name can be
// compared at once.
char* CopyName(const char* name) {
    const std::size_t size = std::strlen(name) + 1;
    void* memory = Allocate(std::max(size, sizeof(ShortName)));
    if (!AssertAllocation(memory != nullptr, kSource, __LINE__)) return nullptr;
    char* copy = static_cast<char*>(memory);
    std::memset(copy, 0, sizeof(ShortName));
    std::memcpy(copy, name, size);
    return copy;
}

// -- Values that are released ---------------------------------------------------------------------

constinit ReleasedVariable* g_released = nullptr;  // of a process that is not threaded

ReleasedVariable** FirstReleased() {
    if (!IsThreaded()) return &g_released;
    ThreadRecord* self = KnownThreadRecord();
    return self ? &self->released : nullptr;
}

// Removes a variable. The release function runs last, because it may use the store.
void Clear(CGNLclStSlot& slot) {
    Release(slot.m_name);
    void* const value = slot.m_value;
    slot = {nullptr, nullptr};
    for (ReleasedVariable** at = FirstReleased(); at && *at; at = &(*at)->next) {
        ReleasedVariable* variable = *at;
        if (variable->slot != &slot) continue;
        const auto release = variable->release;
        *at = variable->next;
        Release(variable);
        return release(value);
    }
}

void ReleaseVariables(ReleasedVariable** first) {
    while (ReleasedVariable* variable = *first) {
        CGNLclStSlot& slot = *variable->slot;
        Release(slot.m_name);
        void* const value = slot.m_value;
        slot = {nullptr, nullptr};
        const auto release = variable->release;
        *first = variable->next;
        Release(variable);
        release(value);
    }
}

// Returns false if allocation fails.
bool NoteRelease(CGNLclStSlot* slot, void (*release)(void*)) {
    void* memory = Allocate(sizeof(ReleasedVariable));
    ReleasedVariable** first = FirstReleased();
    if (!AssertAllocation(memory != nullptr && first, kSource, __LINE__)) {
        Release(memory);
        return false;
    }
    if (IsThreaded()) KnownThreadRecord()->releaseVariables = ReleaseVariables;
    *first = new (memory) ReleasedVariable{*first, slot, release};
    return true;
}

// -- Tables --------------------------------------------------------------------------------------

// Releases a table that Init() created for a thread.
void ReleaseTable(void* memory) {
    auto* table = static_cast<CGNLclStTable*>(memory);
    for (std::int32_t i = 0; i < table->m_count; ++i) Release(table->m_slots[i].m_name);
    Release(table);
}

bool InitThread(long count) {
    if (ThreadValue()) return true;
    auto* table = static_cast<CGNLclStTable*>(NewSlots(offsetof(CGNLclStTable, m_slots), count));
    if (!table) return false;
    table->m_count = static_cast<std::int32_t>(count);
    if (SetThreadValue(table, ReleaseTable)) return true;
    Release(table);
    return false;
}

}  // namespace

CGNLclSt* CGNLclSt::m_pInstance = nullptr;

CGNLclSt::CGNLclSt() : m_count(0), m_slots(nullptr) {}

CGNLclSt::~CGNLclSt() {
    if (m_slots) ReleaseVariables(&g_released);
    Release(m_slots);
}

CGNLclSt* CGNLclSt::Instance() {
    return InstanceOf(m_pInstance, [] { return new (std::nothrow) CGNLclSt; });
}

void CGNLclSt::Free() {
    FreeInstance(m_pInstance);
}

unsigned char CGNLclSt::Init(long count) {
    if (IsThreaded()) return InitThread(count);
    if (m_slots) return 1;
    m_slots = static_cast<CGNLclStSlot*>(NewSlots(0, count));
    if (!m_slots) return 0;
    m_count = static_cast<std::int32_t>(count);
    return 1;
}

long CGNLclSt::SetLocalVariable(const char* name, void* value) {
    if (!name) return -1;
    const auto table = VariableTable::Find(*this);
    for (CGNLclStSlot& slot : table) {
        if (slot.m_name) {
            if (std::strcmp(slot.m_name, name) == 0) return -1;
            continue;
        }
        slot.m_name = CopyName(name);
        if (!slot.m_name) return -1;
        slot.m_value = value;
        return table.IndexOf(&slot);
    }
    return -1;
}

long CGNLclSt::SetLocalVariable(const char* name, void* value, void (*release)(void* value)) {
    const long index = SetLocalVariable(name, value);
    if (index < 0 || !release) return index;
    CGNLclStSlot* slot = VariableTable::Find(*this).At(index);
    if (NoteRelease(slot, release)) return index;
    Clear(*slot);
    return -1;
}

long CGNLclSt::ResetLocalVariable(long, const char*, void*) {
    return -1;
}

void* CGNLclSt::GetLocalVariable(const char* name) {
    const CGNLclStSlot* slot = VariableTable::Find(*this).Named(name);
    return slot ? slot->m_value : nullptr;
}

void* CGNLclSt::GetLocalVariable(long index) {
    const CGNLclStSlot* slot = VariableTable::Find(*this).At(index);
    return slot ? slot->m_value : nullptr;
}

long CGNLclSt::GetIndex(const char* name) {
    const auto table = VariableTable::Find(*this);
    if (!table.exists) return IsThreaded() ? 0 : -1;
    const CGNLclStSlot* slot = table.Named(name);
    return slot ? table.IndexOf(slot) : -1;
}

char* CGNLclSt::GetVarName(long index) {
    const CGNLclStSlot* slot = VariableTable::Find(*this).At(index);
    return slot ? slot->m_name : nullptr;
}

void CGNLclSt::UnsetLocalVariable(const char* name) {
    CGNLclStSlot* named = nullptr;  // the slot whose own name was passed, which is needed until the
                                    // end
    for (CGNLclStSlot& slot : VariableTable::Find(*this)) {
        if (!slot.m_name || (name && std::strcmp(slot.m_name, name) != 0)) continue;
        if (slot.m_name == name)
            named = &slot;
        else
            Clear(slot);
    }
    if (named) Clear(*named);
}

void CGNLclSt::UnsetLocalVariable(long index) {
    if (CGNLclStSlot* slot = VariableTable::Find(*this).At(index)) Clear(*slot);
}
