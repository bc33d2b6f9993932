// Whether what was derived from the settings of a locale object is still right.
#pragma once

#include <atomic>
#include <cstdint>

#include "genlocale.h"
#include "osutil/platform/locale/locale_facts.h"

namespace genutil {

extern std::atomic<std::uint32_t> g_localeEdits;

// A number for an object and the state of all locale objects and of the system's settings: it is
// another one as soon as any of them changed.
inline std::uint64_t MarkOf(const void* object) {
    const std::uint64_t state = std::uint64_t{g_localeEdits.load(std::memory_order_relaxed)} << 32 |
                                platform::LocaleSettingsStamp();
    return (reinterpret_cast<std::uintptr_t>(object) + state * 0x9E3779B97F4A7C15u) | 1;
}

// Remembers for which mark something was done. Any thread.
class Freshness {
  public:
    bool Is(std::uint64_t mark) const { return m_mark.load(std::memory_order_relaxed) == mark; }
    void Note(std::uint64_t mark) { m_mark.store(mark, std::memory_order_relaxed); }

  private:
    std::atomic<std::uint64_t> m_mark{0};
};

// Keeps a pointer for one mark. Any thread: the two words are read one after the other, and a pair
// that does not belong together does not give the mark.
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
