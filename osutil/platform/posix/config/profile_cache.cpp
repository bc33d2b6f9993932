#include "osutil/platform/posix/config/profile_cache.h"

#include <atomic>
#include <cstring>
#include <utility>

#include "genutil/mbutil/code_set.h"
#include "genutil/simd.h"
#include "osutil/config/ini_index.h"

namespace genutil::platform {

namespace {

struct Slot {
    FileState state;
    int codeSet;        // the code set whose letter case the index uses
    char* text;         // null if the file was seen only once
    std::uint64_t use;  // 0 if free
    IniIndex index;
};

// Never destroyed, because threads may still read while the process ends.
constexpr unsigned kSlots = 8;
constinit Slot g_slots[kSlots] = {};
constinit std::uint64_t g_uses = 0;
constinit std::atomic<bool> g_inUse{false};

class Turn {
  public:
    Turn() {
        for (int tries = 0; tries < 200 && !m_taken; ++tries) {
            m_taken = !g_inUse.load(std::memory_order_relaxed) &&
                      !g_inUse.exchange(true, std::memory_order_acquire);
            if (!m_taken) simd::Pause();
        }
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() {
        if (m_taken) g_inUse.store(false, std::memory_order_release);
    }
    bool IsTaken() const { return m_taken; }

  private:
    bool m_taken = false;
};

Slot* FindSlot(const FileState& state) {
    for (Slot& slot : g_slots)
        if (slot.use && slot.state == state && slot.codeSet == g_codeSetState.codeSet) return &slot;
    return nullptr;
}

// Returns the slot of an earlier state of the file, or else the least recently used slot.
Slot& NewSlot(const FileState& state) {
    Slot* chosen = &g_slots[0];
    for (Slot& slot : g_slots) {
        if (slot.use && slot.state.inode == state.inode && slot.state.device == state.device) {
            chosen = &slot;
            break;
        }
        if (slot.use < chosen->use) chosen = &slot;
    }
    Release(chosen->text);
    chosen->index.Clear();
    chosen->text = nullptr;
    chosen->state = state;
    chosen->codeSet = g_codeSetState.codeSet;
    chosen->use = ++g_uses;
    return *chosen;
}

}  // namespace

Cached AskProfileCache(const FileState& state, std::string_view section, std::string_view key,
                       char* out, std::size_t size, std::size_t* length) {
    if (state.size > kLargestCachedProfile) return Cached::kNo;
    const Turn turn;
    if (!turn.IsTaken()) return Cached::kNo;
    Slot* slot = FindSlot(state);
    if (!slot) {
        NewSlot(state);
        return Cached::kNo;
    }
    slot->use = ++g_uses;
    if (!slot->text) return Cached::kLoad;
    std::string_view value;
    if (!slot->index.Find({slot->text, static_cast<std::size_t>(state.size)}, section, key, &value))
        return Cached::kMissing;
    *length = value.size() < size ? value.size() : size - 1;
    std::memcpy(out, value.data(), *length);
    return Cached::kFound;
}

void FillProfileCache(const FileState& state, Owned<char>* text) {
    IniIndex index;
    const int codeSet = g_codeSetState.codeSet;
    const bool built = index.Build({text->Get(), static_cast<std::size_t>(state.size)});
    const Turn turn;
    Slot* slot = built && turn.IsTaken() ? FindSlot(state) : nullptr;
    if (slot && !slot->text && slot->codeSet == codeSet) {
        slot->text = text->Take();
        slot->index.Swap(&index);
    }
    index.Clear();
}

}  // namespace genutil::platform
