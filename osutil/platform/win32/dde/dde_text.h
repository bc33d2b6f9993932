// Texts as DDE partners have them: 16-bit characters, or text of the system's code page.
#pragma once

#include <cstddef>

#include "genutil/allocate.h"

namespace genutil::platform {

// What a partner sent, up to its first 0, if there is one.
class DdeAnswer {
  public:
    // These two are false without memory.
    bool TakeUnits(const void* units, std::size_t count);
    bool TakeSystemText(const void* bytes, std::size_t size);
    void Clear() { m_units.Reset(nullptr); }

    const unsigned short* Get() const { return m_units.Get(); }
    std::size_t Count() const { return m_count; }

  private:
    wchar_t* NewUnits(std::size_t count);

    Owned<unsigned short> m_units;
    std::size_t m_count = 0;
};

// A text for a partner that knows the system's code page only.
class DdeSystemText {
  public:
    bool Make(const wchar_t* text, std::size_t count);  // false without memory

    const char* Get() const { return m_bytes.Get(); }  // null before
    unsigned long Size() const { return m_size; }      // with its terminator

  private:
    Owned<char> m_bytes;
    unsigned long m_size = 0;
};

}  // namespace genutil::platform
