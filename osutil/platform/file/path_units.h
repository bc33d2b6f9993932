// A path in the current code set as 16-bit characters, and a name in the current code set: what
// both sides of the seam make their own paths from, and make of their own names.
#pragma once

#include <cstddef>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

namespace genutil::platform {

// Room for a text, mostly without an allocation.
template <class Unit>
class PathBuffer {
  public:
    // Room for `count` units; null, after the report, when memory runs out. What was there is gone.
    Unit* Reserve(std::size_t count, long line = __builtin_LINE()) {
        m_text = m_short;
        if (count > kShort) {
            m_made.Reset(static_cast<Unit*>(Allocate(std::uint64_t{count} * sizeof(Unit))));
            m_text = m_made.Get();
            AssertAllocation(m_text != nullptr, "osutil/osfile", line);
        }
        return m_text;
    }
    Unit* Get() const { return m_text; }

  private:
    static constexpr std::size_t kShort = 320;

    Unit m_short[kShort];
    Owned<Unit> m_made;
    Unit* m_text = nullptr;
};

class PathUnits {
  public:
    // Null is no path. A byte b that does not convert becomes the unit kRawByte + b (wide.h), and
    // so do both bytes of a character that the code set leaves open: none is taken for a separator.
    explicit PathUnits(const char* path);
    PathUnits(const PathUnits&) = delete;
    PathUnits& operator=(const PathUnits&) = delete;

    unsigned short* Get() const { return m_buffer.Get(); }  // terminated; null when there is none
    std::size_t Count() const { return m_count; }

  private:
    PathBuffer<unsigned short> m_buffer;
    std::size_t m_count = 0;
};

// A name that the system gave, in the current code set: each side makes it of its own names.
class NarrowedName {
  public:
    const char* Get() const { return m_name; }  // null when memory ran out, which has been reported
    // As much of it as there is room for, in whole characters, with a terminator; an empty text
    // when memory ran out.
    void CopyTo(char* out, std::size_t size) const;

  protected:
    NarrowedName() = default;
    NarrowedName(const NarrowedName&) = delete;
    NarrowedName& operator=(const NarrowedName&) = delete;

    PathBuffer<char> m_buffer;
    const char* m_name = nullptr;
};

}  // namespace genutil::platform
