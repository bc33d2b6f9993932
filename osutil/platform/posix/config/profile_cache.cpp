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
    std::size_t size;   // of the text, which may have been converted
    bool isPlain;       // true if the text cannot be indexed
    std::uint64_t use;  // 0 if free
    IniIndex index;
};

// Never destroyed, because threads may still read while the process ends.
constexpr unsigned kSlots = 32;
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

bool IsOfFile(const Slot& slot, const FileState& state) {
    return slot.use && slot.state.inode == state.inode && slot.state.device == state.device;
}

void Empty(Slot* slot) {
    Release(slot->text);
    slot->index.Clear();
    slot->text = nullptr;
    slot->isPlain = false;
    slot->use = 0;
}

// Returns the slot of an earlier state of the file, or else the least recently used slot.
Slot& NewSlot(const FileState& state) {
    Slot* chosen = &g_slots[0];
    for (Slot& slot : g_slots) {
        if (IsOfFile(slot, state)) {
            chosen = &slot;
            break;
        }
        if (slot.use < chosen->use) chosen = &slot;
    }
    Empty(chosen);
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
    if (!slot->text) return slot->isPlain ? Cached::kNo : Cached::kLoad;
    std::string_view value;
    if (!slot->index.Find({slot->text, slot->size}, section, key, &value)) return Cached::kMissing;
    *length = value.size() < size ? value.size() : size - 1;
    std::memcpy(out, value.data(), *length);
    return Cached::kFound;
}

void FillProfileCache(const FileState& state, IniText* text) {
    IniIndex index;
    const int codeSet = g_codeSetState.codeSet;
    const bool built = index.Build(text->View());
    {
        const Turn turn;
        Slot* slot = turn.IsTaken() ? FindSlot(state) : nullptr;
        if (slot && !slot->text && slot->codeSet == codeSet) {
            slot->isPlain = !built;
            if (built) {
                slot->size = text->size;
                slot->text = text->bytes.Take();
                slot->index.Swap(&index);
            }
        }
    }
    index.Clear();
}

void ForgetProfile(const FileState& state) {
    const Turn turn;
    if (!turn.IsTaken()) return;
    for (Slot& slot : g_slots)
        if (IsOfFile(slot, state)) Empty(&slot);
}

}  // namespace genutil::platform
