// The buffers of a CGNString, one of bytes and one of 16-bit characters, and the operations on them
// that its source files share.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "genstring.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

namespace genutil {

class WideView;
enum class WideForm : bool;

constexpr std::uint32_t kGrowByDoubling = 1;

// The maximum length of a text. With the terminator, the number of units still fits in 32 bits.
constexpr std::uint64_t kMaxTextLength = 0xFFFFFFFE;

// Allocates room for `capacity` units and a terminator. Returns null, after reporting it, if
// allocation fails or the capacity is too large.
template <class Unit>
Unit* NewText(std::uint64_t capacity, long line = __builtin_LINE()) {
    void* text = capacity <= kMaxTextLength ? Allocate((capacity + 1) * sizeof(Unit)) : nullptr;
    AssertAllocation(text != nullptr, "genutil/genstr", line);
    return static_cast<Unit*>(text);
}

// Returns the capacity to grow to for n units: exactly n, or `capacity` doubled until it is at
// least n (unchanged if it already is). Returns n if doubling exceeds 32 bits.
inline std::uint64_t GrownCapacity(std::uint64_t capacity, std::uint64_t n, bool doubling) {
    if (!doubling || capacity == 0) return n;
    while (capacity < n) capacity *= 2;
    return capacity <= kMaxTextLength ? capacity : n;
}

// Returns the units to make room for if a caller asks for at most n units of a text. A huge number
// means the whole text.
inline std::uint32_t LimitOf(std::uint32_t n, std::uint64_t length) {
    constexpr std::uint32_t kHuge = 1 << 20;
    return n > kHuge && length < n ? static_cast<std::uint32_t>(length) : n;
}

template <class Unit>
void CopyUnits(Unit* to, const Unit* from, std::uint64_t count) {
    if (count != 0) std::memmove(to, from, static_cast<std::size_t>(count) * sizeof(Unit));
}

// Terminates a text of `length` units and releases the unused part of its buffer, which has room
// for `room` units. Returns the buffer, which may have moved.
template <class Unit>
Unit* FitText(Unit* text, std::uint64_t length, std::uint64_t room) {
    text[length] = 0;
    if (length == room) return text;
    void* fitting = Reallocate(text, (length + 1) * sizeof(Unit));
    return fitting ? static_cast<Unit*>(fitting) : text;
}

// Makes room for n units. If the capacity is not above n, allocates a new buffer and copies the
// text to it. The old buffer is kept in `old`, because the caller's argument may point into it.
// `owned` is false if `text` is the shared byte. Returns false if there is no room.
template <class Unit>
bool Grow(Unit*& text, std::uint32_t length, std::uint32_t& capacity, bool owned, bool doubling,
          std::uint64_t n, Owned<Unit>& old) {
    if (n < capacity) return true;
    const std::uint64_t grownCapacity = GrownCapacity(capacity, n, doubling);
    Unit* grown = NewText<Unit>(grownCapacity);
    if (!grown) return owned && n <= capacity;
    if (!owned) length = 0;
    CopyUnits(grown, text, length);
    grown[length] = 0;
    if (owned) old.Reset(text);
    text = grown;
    capacity = static_cast<std::uint32_t>(grownCapacity);
    return true;
}

// A search text and its replacement. Neither contains a 0.
struct Rule {
    std::string_view from, to;
};

// The units in which a replacement searches: bytes, or characters of the current code set.
enum class Units { kBytes, kCharacters };

// How a new text replaces the old one, which determines the capacity.
enum class Placing {
    kStored,    // as an assignment: kept if large enough, or grown by the string's policy
    kAssigned,  // the same, but an empty text has the effect of Empty()
    kRebuilt,   // the length of the text
};

// Functions on the members of a CGNString that its exported header does not show.
struct StringStorage {
    static bool OwnsData(const CGNString& s);
    static std::uint32_t Capacity(const CGNString& s) { return s.m_capacity; }
    static void Swap(CGNString& a, CGNString& b) noexcept;

    // Replaces the text after its first `offset` bytes with n bytes of `text`, which may point into
    // the string itself.
    static void Store(CGNString& s, const char* text, std::uint64_t offset, std::uint64_t n);
    // Replaces the text with n bytes of `text`, which may point into the string itself. If the
    // buffer is too small, the new one has spare room, so that later values of similar length fit.
    // Returns false, with the text unchanged, if allocation fails.
    static bool Put(CGNString& s, const char* text, std::uint64_t n);
    // Replaces the text with n bytes of `text` followed by 0 bytes up to `length`, in a buffer of
    // that size.
    static void Take(CGNString& s, const char* text, std::uint64_t n, std::uint64_t length);

    // Replaces the text with the `length` bytes in a buffer with room for `room`, and takes
    // ownership of the buffer. Never fails.
    static void Adopt(CGNString& s, char* text, std::uint64_t length, std::uint64_t room,
                      Placing placing);
    // Same as Adopt() with kStored, but with room for `asked` bytes, which is at least the length.
    static void AdoptWithRoom(CGNString& s, char* text, std::uint64_t length, std::uint64_t asked);
    // Replaces the part from `begin` to `end` of the text, which ends at its first 0. Returns false
    // if allocation fails.
    static bool Splice(CGNString& s, const char* begin, const char* end, std::string_view other,
                       Placing placing);
    // Reduces the capacity to the length. The bytes are unchanged.
    static void Fit(CGNString& s);

    // Applies the rules in a single pass into a new buffer. At each position the first rule that
    // matches is applied. There may be at most as many rules as UnitFinder accepts. The text ends
    // at its first 0.
    static void Replace(CGNString& s, const Rule* rules, unsigned count, Units units,
                        Placing placing);

    // The 16-bit copy. GrowWide makes room, DropWide discards the copy, and EnsureWide builds it if
    // there is none. The first and the last return false if allocation fails.
    static bool GrowWide(CGNString& s, std::uint64_t n, Owned<unsigned short>& old);
    static void DropWide(const CGNString& s);
    static bool EnsureWide(const CGNString& s);

    // The following functions require the 16-bit copy.
    struct WideText {
        const unsigned short* text;
        std::uint32_t length;
    };
    static WideText WideOf(const CGNString& s) { return {s.m_wide, s.m_wideLength}; }
    // IsBroken returns true if the text is invalid in the code set, so that its characters are its
    // bytes. MayBeBroken is faster, and also true if the text has as many bytes as 16-bit
    // characters.
    static bool IsBroken(const CGNString& s);
    static bool MayBeBroken(const CGNString& s) { return s.m_wideLength == s.m_length; }
    // Returns true if the text is ASCII and the 16-bit copy is the same text. A copy may differ
    // from the bytes after SetAt2().
    static bool IsSameAscii(const CGNString& s);
    // Returns the form in which a text is compared with this one's characters.
    static WideForm FormFor(const CGNString& s);
    // Returns the position of the first occurrence of `wanted` from `start` on, or -1 if there is
    // none or if `start` is no position in the text.
    static int Find(const CGNString& s, const WideView& wanted, int start);
    // Returns the bytes of the characters from `begin` to `end` in a new buffer, or null if
    // allocation fails.
    static char* NewPart(const CGNString& s, std::uint32_t begin, std::uint32_t end,
                         std::uint32_t* length);
    // Same for a substring, which is aligned to whole characters.
    static char* NewSubStr(const CGNString& s, std::uint32_t start, int count,
                           std::uint32_t* length);
    // Replaces the text with the bytes of `count` characters, which were made from its own. They
    // are carried bytes if the text is broken, and must not point into the 16-bit copy.
    static void StoreEdited(CGNString& s, const unsigned short* wide, std::uint64_t count);
    // Replaces the characters from `begin` to `end` and rebuilds the bytes. Returns false if
    // allocation fails.
    static bool Edit(CGNString& s, std::uint32_t begin, std::uint32_t end, const WideView& added);
    // Maps the characters from `begin` to `end` and rebuilds the bytes.
    template <class Map>
    static void MapCharacters(CGNString& s, std::uint32_t begin, std::uint32_t end, Map map);
    // Rebuilds the bytes from the 16-bit copy, with '?' for characters that do not convert. If
    // allocation fails, keeps the bytes, discards the 16-bit copy with its changes and returns
    // false.
    static bool RebuildData(CGNString& s);
    // Same for a text that may be broken. The bytes of a broken text are kept.
    static bool Rebuild(CGNString& s);
    // Implements CGNString::DuplicateDataFromWzBuffer.
    static void RebuildLimited(const CGNString& s, unsigned bytesPerCharacter);

  private:
    static void InstallData(const CGNString& s, char* text, std::uint64_t length,
                            std::uint64_t capacity);
    static void ReplaceBytes(CGNString& s, const Rule* rules, unsigned count, bool starts,
                             Placing placing);
    static void ReplaceWide(CGNString& s, const Rule* rules, unsigned count, Placing placing);
    static bool GrowData(CGNString& s, std::uint64_t n, Owned<char>& old);
    static bool GrowInPlace(CGNString& s, const char* text, std::uint64_t n);
    static void StoreAnew(CGNString& s, const char* text, std::uint64_t offset, std::uint64_t n,
                          std::uint64_t spare = 0);
    static void CheckLayout();
    friend class ::CGNString;
};

}  // namespace genutil
