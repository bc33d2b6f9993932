// Access to both buffers of CGNString, and the rules that hold between operations.
#pragma once

#include <string>
#include <vector>

#include "genstr.h"
#include "genutil/mbutil/wide_convert.h"

class StringProbe : public CGNString {
  public:
    using CGNString::CGNString;
    using CGNString::operator=;
    using CGNString::DuplicateDataFromWzBuffer;
    using CGNString::DuplicateWzBufferFromData;
    using CGNString::ExpandBufferToDataBuffer;
    using CGNString::ExpandBufferToWzBuffer;
    using CGNString::m_capacity;
    using CGNString::m_data;
    using CGNString::m_flags;
    using CGNString::m_length;
    using CGNString::m_wide;
    using CGNString::m_wideCapacity;
    using CGNString::m_wideLength;
    using CGNString::ReallocateToNumBytes;
    using CGNString::ReallocateToNumChars;

    std::string Bytes() const { return {m_data, m_length}; }

    std::u16string Characters() const {
        std::u16string characters;
        for (const unsigned short* at = m_wide; *at; ++at) characters += static_cast<char16_t>(*at);
        return characters;
    }

    // Returns the first rule that is broken, or "".
    const char* BrokenRule() const {
        if (!m_data || m_data[m_length] != 0) return "the bytes end with a terminator";
        if (m_length > m_capacity) return "the bytes fit their buffer";
        if (!m_wide) return m_wideLength || m_wideCapacity ? "no characters have no length" : "";
        if (m_wide[m_wideLength] != 0) return "the characters end with a terminator";
        if (m_wideLength > m_wideCapacity) return "the characters fit their buffer";
        if (genutil::NarrowLength(m_wide) < 0) return "";  // the bytes replace some characters
        StringProbe fresh;
        fresh.CopyNBytes(*this, m_length);
        fresh.DuplicateWzBufferFromData();
        return fresh.Characters() == Characters() ? "" : "bytes and characters are the same text";
    }
};
