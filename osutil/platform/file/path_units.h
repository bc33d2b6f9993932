// A path in the current code set as 16-bit characters, and a name in the current code set. Both
// implementations of the platform layer derive their own paths from the former and the latter from
// their own names.
#pragma once

#include <cstddef>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

namespace genutil::platform {

// A buffer for a text, usually without an allocation.
template <class Unit>
class PathBuffer {
  public:
    // Makes room for `count` units and discards the content. Returns null, after reporting it, if
    // allocation fails.
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
    // Converts a path. Null means no path. A byte b that does not convert becomes the unit kRawByte
    // + b (wide_convert.h). So do both bytes of an unassigned character, so that neither is taken
    // for a separator.
    explicit PathUnits(const char* path);
    PathUnits(const PathUnits&) = delete;
    PathUnits& operator=(const PathUnits&) = delete;

    unsigned short* Get() const { return m_buffer.Get(); }  // terminated; null if there is no path
    std::size_t Count() const { return m_count; }

  private:
    PathBuffer<unsigned short> m_buffer;
    std::size_t m_count = 0;
};

// A name received from the system, in the current code set. Each implementation derives it from its
// own names.
class NarrowedName {
  public:
    const char* Get() const {
        return m_name;
    }  // null if allocation failed, which has been
       // reported
    // Copies as many whole characters as fit, with a terminator. The result is empty if allocation
    // failed.
    void CopyTo(char* out, std::size_t size) const;

  protected:
    NarrowedName() = default;
    NarrowedName(const NarrowedName&) = delete;
    NarrowedName& operator=(const NarrowedName&) = delete;

    PathBuffer<char> m_buffer;
    const char* m_name = nullptr;
};

}  // namespace genutil::platform
