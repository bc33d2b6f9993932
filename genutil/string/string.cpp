// CGNString's bytes: construction, assignment, appending.
#include <algorithm>
#include <cstring>

#include "genstring.h"
#include "genutil/string/storage.h"
#include "mbutil.h"

using genutil::CopyUnits;
using genutil::NewText;
using Storage = genutil::StringStorage;

// -- Construction --------------------------------------------------------------------------------

CGNString::CGNString() {
    InitValue();
}

CGNString::CGNString(const char* s, int capacity) {
    InitValue();
    if (!s) return;
    const std::size_t length = std::strlen(s);
    const std::uint64_t room = capacity > 0 ? static_cast<unsigned>(capacity) : 0;
    const std::uint64_t taken = std::max<std::uint64_t>(room, length);
    char* text = NewText<char>(taken);
    if (!text) return;
    std::memcpy(text, s, length + 1);
    m_data = text;
    m_length = static_cast<std::uint32_t>(length);
    m_capacity = static_cast<std::uint32_t>(taken);
}

CGNString::CGNString(const CGNString& other) {
    InitValue();
    if (other.IsEmpty()) return;
    char* text = NewText<char>(other.m_capacity);
    if (!text) return;
    CopyUnits(text, other.m_data, other.m_length);
    text[other.m_length] = 0;
    m_data = text;
    m_length = other.m_length;
    m_capacity = other.m_capacity;
    m_flags = other.m_flags;
    if (!other.m_wide) return;
    m_wide = NewText<unsigned short>(other.m_wideCapacity);
    if (!m_wide) return;
    CopyUnits(m_wide, other.m_wide, other.m_wideLength);
    m_wide[other.m_wideLength] = 0;
    m_wideLength = other.m_wideLength;
    m_wideCapacity = other.m_wideCapacity;
}

CGNString::~CGNString() {
    FreeBuffers();
}

// -- Assignment ----------------------------------------------------------------------------------

CGNString& CGNString::operator=(const CGNString& other) {
    if (this == &other) return *this;
    if (other.IsEmpty()) return Empty();
    Storage::Store(*this, other.m_data, 0, std::strlen(other.m_data));
    return *this;
}

CGNString& CGNString::operator=(const char* s) {
    if (!s) return Empty();
    Storage::Store(*this, s, 0, std::strlen(s));
    return *this;
}

void CGNString::MoveFrom(CGNString& other) noexcept {
    if (other.IsEmpty()) {
        Empty();
        return;
    }
    char* const text = other.m_data;
    const std::size_t length = std::strlen(text);
    const std::uint32_t room = other.m_capacity;
    other.m_data = nullptr;
    other.Empty();
    Storage::Adopt(*this, text, length, room, genutil::Placing::kStored);
}

CGNString& CGNString::AssignBytes(const char* s, std::size_t n) {
    Storage::Store(*this, s, 0, n);
    return *this;
}

CGNString& CGNString::Set(const CGNString& other) {
    return *this = other;
}

CGNString& CGNString::CopyNBytes(const char* s, unsigned int n) {
    if (!s) return Empty();
    const void* end = std::memchr(s, 0, n);
    Storage::Take(*this, s, end ? static_cast<std::size_t>(static_cast<const char*>(end) - s) : n,
                  n);
    return *this;
}

CGNString& CGNString::CopyUntil(const char* s, const char* delimiter) {
    if (!s) return *this = "";
    const char* end = mbstrstr(s, delimiter ? delimiter : "");
    const std::size_t n = end ? static_cast<std::size_t>(end - s) : std::strlen(s);
    Storage::Take(*this, s, n, n);
    return *this;
}

CGNString& CGNString::CopyUntil(const char* s, char delimiter) {
    const char text[2] = {delimiter, 0};
    return CopyUntil(s, text);
}

// -- Appending -----------------------------------------------------------------------------------

CGNString& CGNString::operator+=(const CGNString& other) {
    if (!other.IsEmpty()) Storage::Store(*this, other.m_data, m_length, other.m_length);
    return *this;
}

CGNString& CGNString::operator+=(const char* s) {
    if (s) Storage::Store(*this, s, m_length, std::strlen(s));
    return *this;
}

CGNString& CGNString::AppendBytes(const char* s, std::size_t n) {
    Storage::Store(*this, s, m_length, n);
    return *this;
}

CGNString& CGNString::AppendByte(char c) {
    Storage::Store(*this, &c, m_length, 1);
    return *this;
}

CGNString& CGNString::AppendUntil(const char* s, const char* delimiter) {
    CGNString taken;
    taken.CopyUntil(s, delimiter);
    return *this += taken;
}

CGNString& CGNString::AppendUntil(const char* s, char delimiter) {
    const char text[2] = {delimiter, 0};
    return AppendUntil(s, text);
}

// -- Bytes ---------------------------------------------------------------------------------------

unsigned int CGNString::GetString(char* out, unsigned int size) const {
    if (size == 0 || !out) return 0;
    out[0] = 0;
    if (IsEmpty()) return 0;
    mbstrncpy(out, m_data, size);
    out[size - 1] = 0;
    return static_cast<unsigned int>(std::strlen(out));
}
