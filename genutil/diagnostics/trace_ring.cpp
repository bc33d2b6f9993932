#include "genutil/diagnostics/trace_ring.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <new>

#include "genutil/allocate.h"
#include "genutil/simd.h"
#include "osutil/platform/process/crash.h"

namespace genutil {
namespace {

constexpr std::size_t kLongest = 500;  // bytes of a line that are kept
constexpr long kMostLines = 1000000;

class Slot {
  public:
    // Returns false if another thread uses the slot for long, perhaps forever.
    bool Take() {
        for (int i = 0; i < 1000; ++i) {
            if (!m_isTaken.exchange(true, std::memory_order_acquire)) return true;
            simd::Pause();
        }
        return false;
    }
    void Free() { m_isTaken.store(false, std::memory_order_release); }

    void Fill(const char* line, std::size_t size) {
        const bool isCut = size > kLongest;
        length = static_cast<std::uint32_t>(isCut ? kLongest : size);
        std::memcpy(text, line, length);
        if (isCut) text[length - 1] = '\n';
    }

    std::uint32_t length;
    char text[kLongest];

  private:
    std::atomic<bool> m_isTaken;
};

struct Ring {
    std::uint32_t count;
    std::atomic<std::uint32_t> next;  // number of lines so far
    platform::CrashFile* file;
    Ring* older;  // kept, because a thread may still be using it

    Slot& At(std::uint32_t line) { return reinterpret_cast<Slot*>(this + 1)[line % count]; }
};

std::atomic<Ring*> g_ring{nullptr};

}  // namespace

bool StartTraceRing(long count, const char* path) {
    if (count < 0 || count > kMostLines) return false;
    const auto lines = static_cast<std::uint32_t>(count);
    const std::uint64_t size = sizeof(Ring) + std::uint64_t{lines} * sizeof(Slot);
    void* memory = Allocate(size);
    platform::CrashFile* file = count > 0 && memory ? platform::NewCrashFile(path) : nullptr;
    if (!memory || (count > 0 && !file)) {
        Release(memory);
        return false;
    }
    std::memset(memory, 0, static_cast<std::size_t>(size));
    auto* ring = new (memory) Ring{lines, {0}, file, g_ring.load()};
    for (std::uint32_t i = 0; i < lines; ++i) new (&ring->At(i)) Slot{};
    g_ring.store(ring, std::memory_order_release);
    return true;
}

void AddToTraceRing(const char* line, std::size_t length) {
    Ring* ring = g_ring.load(std::memory_order_acquire);
    if (!ring || ring->count == 0) return;
    Slot& slot = ring->At(ring->next.fetch_add(1, std::memory_order_relaxed));
    if (!slot.Take()) return;
    slot.Fill(line, length);
    slot.Free();
}

void WriteTraceRing(const char* heading) {
    Ring* ring = g_ring.load(std::memory_order_acquire);
    if (!ring || ring->count == 0) return;
    const std::intptr_t file = platform::OpenCrashFile(ring->file);
    platform::WriteCrashFile(file, heading, std::strlen(heading));
    const std::uint32_t next = ring->next.load(std::memory_order_relaxed);
    for (std::uint32_t i = 0; i < ring->count; ++i) {
        Slot& slot = ring->At(next + i);
        if (!slot.Take()) continue;
        platform::WriteCrashFile(file, slot.text, slot.length);
        slot.length = 0;
        slot.Free();
    }
    platform::CloseCrashFile(file);
}

bool IsTraceRingUsed() {
    const Ring* ring = g_ring.load(std::memory_order_acquire);
    return ring && ring->count != 0;
}

}  // namespace genutil
