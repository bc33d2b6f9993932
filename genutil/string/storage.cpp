// The buffers of CGNString: their layout, growth and release.
#include "genutil/string/storage.h"

#include <cstddef>
#include <cstring>
#include <utility>

using genutil::CopyUnits;
using genutil::Owned;
using Storage = genutil::StringStorage;

namespace {

// The text of every string without a buffer. Nothing writes to it: a plain store of 0 from two
// threads at once would already be a race.
char g_noText[1];

}  // namespace

// -- Buffers -------------------------------------------------------------------------------------

namespace genutil {

// The layout is part of the interface: programs derive from the class and access its members.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
void StringStorage::CheckLayout() {
    constexpr std::size_t p = sizeof(void*);
    static_assert(p != 4 || sizeof(CGNString) == 32);
    static_assert(offsetof(CGNString, m_wide) == p);
    static_assert(offsetof(CGNString, m_wideLength) == 2 * p);
    static_assert(offsetof(CGNString, m_wideCapacity) == 2 * p + 4);
    static_assert(offsetof(CGNString, m_data) == 2 * p + 8);
    static_assert(offsetof(CGNString, m_length) == 3 * p + 8);
    static_assert(offsetof(CGNString, m_capacity) == 3 * p + 12);
    static_assert(offsetof(CGNString, m_flags) == 3 * p + 16);
}
#pragma GCC diagnostic pop

bool StringStorage::OwnsData(const CGNString& s) {
    return s.m_data && s.m_data != g_noText;
}

void StringStorage::Swap(CGNString& a, CGNString& b) noexcept {
    std::swap(a.m_wide, b.m_wide);
    std::swap(a.m_wideLength, b.m_wideLength);
    std::swap(a.m_wideCapacity, b.m_wideCapacity);
    std::swap(a.m_data, b.m_data);
    std::swap(a.m_length, b.m_length);
    std::swap(a.m_capacity, b.m_capacity);
    std::swap(a.m_flags, b.m_flags);
}

void StringStorage::DropWide(const CGNString& s) {
    Release(s.m_wide);
    s.m_wide = nullptr;
    s.m_wideLength = 0;
    s.m_wideCapacity = 0;
}

bool StringStorage::GrowWide(CGNString& s, std::uint64_t n, Owned<unsigned short>& old) {
    const bool doubling = s.m_flags & kGrowByDoubling;
    return Grow(s.m_wide, s.m_wideLength, s.m_wideCapacity, s.m_wide != nullptr, doubling, n, old);
}

bool StringStorage::GrowData(CGNString& s, std::uint64_t n, Owned<char>& old) {
    const bool doubling = s.m_flags & kGrowByDoubling;
    return Grow(s.m_data, s.m_length, s.m_capacity, OwnsData(s), doubling, n, old);
}

void StringStorage::Store(CGNString& s, const char* text, std::uint64_t offset, std::uint64_t n) {
    const std::uint64_t length = offset + n;
    if (length >= s.m_capacity) {
        if (length != 0 || OwnsData(s)) return StoreAnew(s, text, offset, n);
        return DropWide(s);
    }
    std::memmove(s.m_data + offset, text, static_cast<std::size_t>(n));
    s.m_length = static_cast<std::uint32_t>(length);
    s.m_data[length] = 0;
    if (s.m_wide) DropWide(s);
}

// Grows a large buffer without copying it, which the system can do by moving pages: a text that
// grows exactly by what is appended would otherwise be copied each time. Returns false if that is
// not possible, or if the new text points into the buffer.
bool StringStorage::GrowInPlace(CGNString& s, const char* text, std::uint64_t n) {
    constexpr std::uint32_t kLarge = 1 << 17;
    const auto at = reinterpret_cast<std::uintptr_t>(text);
    const auto begin = reinterpret_cast<std::uintptr_t>(s.m_data);
    if (s.m_capacity < kLarge || n < s.m_capacity) return false;
    if (at >= begin && at - begin <= s.m_capacity) return false;
    const std::uint64_t capacity = GrownCapacity(s.m_capacity, n, s.m_flags & kGrowByDoubling);
    void* const grown = capacity <= kMaxTextLength ? Reallocate(s.m_data, capacity + 1) : nullptr;
    if (!grown) return false;
    s.m_data = static_cast<char*>(grown);
    s.m_capacity = static_cast<std::uint32_t>(capacity);
    return true;
}

// Stores the text in a new buffer. The old one is kept until the text is copied.
void StringStorage::StoreAnew(CGNString& s, const char* text, std::uint64_t offset, std::uint64_t n,
                              std::uint64_t spare) {
    Owned<char> old;
    if (!GrowInPlace(s, text, offset + n + spare) && !GrowData(s, offset + n + spare, old)) return;
    CopyUnits(s.m_data + offset, text, n);
    s.m_length = static_cast<std::uint32_t>(offset + n);
    s.m_data[s.m_length] = 0;
    DropWide(s);
}

bool StringStorage::Put(CGNString& s, const char* text, std::uint64_t n) {
    constexpr std::uint64_t kSpare = 16;
    if (n == 0) {
        s.Clear();
        return true;
    }
    if (n < s.m_capacity)
        Store(s, text, 0, n);
    else
        StoreAnew(s, text, 0, n, kSpare);
    return n < s.m_capacity;
}

void StringStorage::Take(CGNString& s, const char* text, std::uint64_t n, std::uint64_t length) {
    char* taken = NewText<char>(length);
    if (!taken) return;
    CopyUnits(taken, text, n);
    std::memset(taken + n, 0, static_cast<std::size_t>(length - n) + 1);
    DropWide(s);
    InstallData(s, taken, length, length);
}

void StringStorage::InstallData(const CGNString& s, char* text, std::uint64_t length,
                                std::uint64_t capacity) {
    if (OwnsData(s)) Release(s.m_data);
    s.m_data = text;
    s.m_length = static_cast<std::uint32_t>(length);
    s.m_capacity = static_cast<std::uint32_t>(capacity);
}

void StringStorage::Adopt(CGNString& s, char* text, std::uint64_t length, std::uint64_t room,
                          Placing placing) {
    if (placing == Placing::kAssigned && length == 0) {
        Release(text);
        s.Empty();
        return;
    }
    text = FitText(text, length, room);
    if (placing != Placing::kRebuilt) return AdoptWithRoom(s, text, length, length);
    DropWide(s);
    InstallData(s, text, length, length);
}

// The given buffer has room for exactly `asked` bytes.
void StringStorage::AdoptWithRoom(CGNString& s, char* text, std::uint64_t length,
                                  std::uint64_t asked) {
    DropWide(s);
    if (asked < s.m_capacity) {
        CopyUnits(s.m_data, static_cast<const char*>(text), length);
        s.m_data[length] = 0;
        s.m_length = static_cast<std::uint32_t>(length);
        return Release(text);
    }
    std::uint64_t capacity = GrownCapacity(s.m_capacity, asked, s.m_flags & kGrowByDoubling);
    void* grown = capacity == asked ? nullptr : Reallocate(text, capacity + 1);
    if (grown)
        text = static_cast<char*>(grown);
    else
        capacity = asked;
    InstallData(s, text, length, capacity);
}

bool StringStorage::Splice(CGNString& s, const char* begin, const char* end, std::string_view other,
                           Placing placing) {
    const std::size_t head = static_cast<std::size_t>(begin - s.m_data), tail = std::strlen(end);
    const std::uint64_t length = std::uint64_t{head} + other.size() + tail;
    char* text = NewText<char>(length);
    if (!text) return false;
    CopyUnits(text, static_cast<const char*>(s.m_data), head);
    CopyUnits(text + head, other.data(), other.size());
    CopyUnits(text + head + other.size(), end, tail);
    text[length] = 0;
    Adopt(s, text, length, length, placing);
    return true;
}

void StringStorage::Fit(CGNString& s) {
    if (!OwnsData(s) || s.m_capacity == s.m_length) return;
    s.m_data = FitText(s.m_data, s.m_length, s.m_capacity);
    s.m_capacity = s.m_length;
}

}  // namespace genutil

void CGNString::InitValue() {
    m_wide = nullptr;
    m_wideLength = 0;
    m_wideCapacity = 0;
    m_data = g_noText;
    m_length = 0;
    m_capacity = 0;
    m_flags = 0;
}

void CGNString::FreeBuffers() {
    if (Storage::OwnsData(*this)) genutil::Release(m_data);
    m_data = nullptr;
    m_length = 0;
    m_capacity = 0;
    FreeWzBuffer();
}

void CGNString::FreeWzBuffer() {
    Storage::DropWide(*this);
}

unsigned int CGNString::ReallocateToNumBytes(unsigned int n) {
    Owned<char> old;
    Storage::GrowData(*this, n, old);
    return m_capacity;
}

void CGNString::ExpandBufferToDataBuffer(char* s) {
    Owned<char> old;
    const std::size_t n = std::strlen(s);
    if (!Storage::GrowData(*this, n, old)) return;
    CopyUnits(m_data, static_cast<const char*>(s), n);
    m_length = static_cast<std::uint32_t>(n);
    m_data[n] = 0;
}

// -- Room ----------------------------------------------------------------------------------------

CGNString& CGNString::AllocateBuffer(unsigned int n) {
    return AllocateBuffer(n, 0);
}

CGNString& CGNString::AllocateBuffer(unsigned int n, unsigned char grow) {
    if (grow) m_flags |= genutil::kGrowByDoubling;
    ReallocateToNumBytes(n);
    return *this;
}

CGNString& CGNString::Empty() {
    FreeBuffers();
    InitValue();
    return *this;
}

CGNString& CGNString::Clear() {
    if (m_capacity != 0) m_data[0] = 0;
    m_length = 0;
    if (m_wide) {
        m_wide[0] = 0;
        m_wideLength = 0;
        // The buffer is kept, but the next growth must not rely on its size.
        m_wideCapacity = 0;
    }
    return *this;
}
