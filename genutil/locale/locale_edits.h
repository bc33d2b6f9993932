// Detection of changes to locale objects, for data derived from their settings.
#pragma once

#include <atomic>
#include <cstdint>

#include "genlocale.h"
#include "osutil/platform/locale/locale_facts.h"

namespace genutil {

extern std::atomic<std::uint32_t> g_localeEdits;

// Returns a number for an object together with the state of all locale objects and of the system's
// settings. It changes as soon as any of them changes.
inline std::uint64_t MarkOf(const void* object) {
    const std::uint64_t state = std::uint64_t{g_localeEdits.load(std::memory_order_relaxed)} << 32 |
                                platform::LocaleSettingsStamp();
    return (reinterpret_cast<std::uintptr_t>(object) + state * 0x9E3779B97F4A7C15u) | 1;
}

// Records the mark for which something was done. Safe for concurrent use.
class Freshness {
  public:
    bool Is(std::uint64_t mark) const { return m_mark.load(std::memory_order_relaxed) == mark; }
    void Note(std::uint64_t mark) { m_mark.store(mark, std::memory_order_relaxed); }

  private:
    std::atomic<std::uint64_t> m_mark{0};
};

// A pointer kept for one mark. Safe for concurrent use: the two words are read separately, and a
// mismatched pair does not yield the mark.
template <class T>
class Kept {
  public:
    T* For(std::uint64_t mark) const {
        const std::uint64_t pointer = m_pointer.load(std::memory_order_acquire);
        if ((m_check.load(std::memory_order_acquire) ^ pointer) != mark) return nullptr;
        return reinterpret_cast<T*>(static_cast<std::uintptr_t>(pointer));
    }
    void Keep(std::uint64_t mark, T* object) {
        const std::uint64_t pointer = reinterpret_cast<std::uintptr_t>(object);
        m_pointer.store(pointer, std::memory_order_release);
        m_check.store(mark ^ pointer, std::memory_order_release);
    }

  private:
    std::atomic<std::uint64_t> m_pointer{0}, m_check{0};
};

}  // namespace genutil
