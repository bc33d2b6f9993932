// Texts in the form of DDE partners: 16-bit characters, or text in the system's code page.
#pragma once

#include <cstddef>

#include "genutil/allocate.h"

namespace genutil::platform {

// A text received from a partner, up to its first 0, if there is one.
class DdeAnswer {
  public:
    // Both return false if allocation fails.
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

// A text for a partner that supports only the system's code page.
class DdeSystemText {
  public:
    bool Make(const wchar_t* text, std::size_t count);  // returns false if allocation fails

    const char* Get() const { return m_bytes.Get(); }  // null before Make()
    unsigned long Size() const { return m_size; }      // including the terminator

  private:
    Owned<char> m_bytes;
    unsigned long m_size = 0;
};

}  // namespace genutil::platform
