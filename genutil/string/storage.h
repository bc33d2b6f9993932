// Buffers of text, and what CGNString's operations share in handling its two.
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

// With its terminator a text of this many units still has a 32-bit count.
constexpr std::uint64_t kMaxTextLength = 0xFFFFFFFE;

// Room for `capacity` units and a terminator; null, after the report, when there is none.
template <class Unit>
Unit* NewText(std::uint64_t capacity, long line = __builtin_LINE()) {
    void* text = capacity <= kMaxTextLength ? Allocate((capacity + 1) * sizeof(Unit)) : nullptr;
    AssertAllocation(text != nullptr, "genutil/genstr", line);
    return static_cast<Unit*>(text);
}

// The capacity to grow to for n units: exactly n, or `capacity` doubled until it holds them (which
// keeps it when n is the capacity). A doubling beyond 32 bits falls back to n.
inline std::uint64_t GrownCapacity(std::uint64_t capacity, std::uint64_t n, bool doubling) {
    if (!doubling || capacity == 0) return n;
    while (capacity < n) capacity *= 2;
    return capacity <= kMaxTextLength ? capacity : n;
}

template <class Unit>
void CopyUnits(Unit* to, const Unit* from, std::uint64_t count) {
    if (count != 0) std::memmove(to, from, static_cast<std::size_t>(count) * sizeof(Unit));
}

// Gives back what a text of `length` does not need of its room, and terminates it.
template <class Unit>
Unit* FitText(Unit* text, std::uint64_t length, std::uint64_t room) {
    text[length] = 0;
    if (length == room) return text;
    void* fitting = Reallocate(text, (length + 1) * sizeof(Unit));
    return fitting ? static_cast<Unit*>(fitting) : text;
}

// Makes room for n units in a buffer that ends up larger than, or else newly allocated for, n; the
// text moves along. What it was in stays alive in `old`, because the caller's argument may lie
// there. `owned` tells a buffer of the string from the shared byte. False when there is no such
// room.
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

// A search text and what takes its place. Neither has a 0 in it.
struct Rule {
    std::string_view from, to;
};

// What a replacement looks at: bytes, or characters of the current code set.
enum class Units { kBytes, kCharacters };

// How a new text takes the place of the old one. The capacity is one of: that of a string to which
// a text is assigned, which has room or grows by the string's policy; or the length of the text, of
// which the bytes are built anew.
enum class Placing {
    kStored,    // the first
    kAssigned,  // the first; an empty text has the effect of Empty()
    kRebuilt,   // the second
};

// Works on the members of a CGNString, out of sight of its exported header.
struct StringStorage {
    static bool OwnsData(const CGNString& s);
    static std::uint32_t Capacity(const CGNString& s) { return s.m_capacity; }
    static void Swap(CGNString& a, CGNString& b) noexcept;

    // The text becomes its first `offset` bytes and n bytes of `text`, which may lie in it itself.
    static void Store(CGNString& s, const char* text, std::uint64_t offset, std::uint64_t n);
    // The text becomes n bytes of `text`, which may lie in it itself. Where the buffer is too small
    // the new one has room to spare, so that values of much the same length need no other. False,
    // with the text as it was, when memory runs out.
    static bool Put(CGNString& s, const char* text, std::uint64_t n);
    // The text becomes n bytes of `text` and 0 bytes up to `length`, in a buffer of that size.
    static void Take(CGNString& s, const char* text, std::uint64_t n, std::uint64_t length);

    // The text becomes what is in a buffer for `room` bytes, which it takes over. Never fails.
    static void Adopt(CGNString& s, char* text, std::uint64_t length, std::uint64_t room,
                      Placing placing);
    // The same for a text that room was asked for: its length, or more.
    static void AdoptWithRoom(CGNString& s, char* text, std::uint64_t length, std::uint64_t asked);
    // What stands from `begin` to `end` in the text, up to its first 0, becomes another. False
    // without memory.
    static bool Splice(CGNString& s, const char* begin, const char* end, std::string_view other,
                       Placing placing);
    // The bytes stay; their capacity becomes their length.
    static void Fit(CGNString& s);

    // Replaces what the rules say, at each place by the first that fits there, in one go and one
    // new buffer; at most UnitFinder's number of rules. A text ends at its first 0.
    static void Replace(CGNString& s, const Rule* rules, unsigned count, Units units,
                        Placing placing);

    // The 16-bit copy: makes room, drops it, builds it if there is none (false without memory).
    static bool GrowWide(CGNString& s, std::uint64_t n, Owned<unsigned short>& old);
    static void DropWide(const CGNString& s);
    static bool EnsureWide(const CGNString& s);

    // These need the 16-bit copy.
    struct WideText {
        const unsigned short* text;
        std::uint32_t length;
    };
    static WideText WideOf(const CGNString& s) { return {s.m_wide, s.m_wideLength}; }
    // Whether the text is invalid in the code set, so that its
    // characters are its bytes; `may` is quick, and true too where each character has one byte.
    static bool IsBroken(const CGNString& s);
    static bool MayBeBroken(const CGNString& s) { return s.m_wideLength == s.m_length; }
    // The form in which a text is compared with this one's characters.
    static WideForm FormFor(const CGNString& s);
    // The place of a character from `start` on, which must be one that there is; -1 when it stands
    // nowhere.
    static int Find(const CGNString& s, const WideView& wanted, int start);
    // The bytes of some characters in a new buffer; null without memory.
    static char* NewPart(const CGNString& s, std::uint32_t begin, std::uint32_t end,
                         std::uint32_t* length);
    // The same for a substring, of whole characters.
    static char* NewSubStr(const CGNString& s, std::uint32_t start, int count,
                           std::uint32_t* length);
    // The text becomes that of some characters, which do not lie in its own 16-bit copy.
    static void StoreWide(CGNString& s, const unsigned short* wide, std::uint64_t count);
    // Some characters become those of a text, and the bytes are built anew. False without memory.
    static bool Edit(CGNString& s, std::uint32_t begin, std::uint32_t end, const WideView& added);
    // Maps some characters, and builds the bytes anew.
    static void MapCharacters(CGNString& s, std::uint32_t begin, std::uint32_t end,
                              unsigned short (*map)(unsigned short));
    // Builds the bytes from the 16-bit copy, where what does not convert becomes '?'. Without
    // memory the bytes win, since they are what the string is: the 16-bit copy, changed or new, is
    // dropped. False then.
    static bool RebuildData(CGNString& s);
    // The same for a text that may be broken; its bytes stay then.
    static bool Rebuild(CGNString& s);
    // What CGNString::DuplicateDataFromWzBuffer promises.
    static void RebuildLimited(const CGNString& s, unsigned bytesPerCharacter);

  private:
    static void InstallData(const CGNString& s, char* text, std::uint64_t length,
                            std::uint64_t capacity);
    static void ReplaceBytes(CGNString& s, const Rule* rules, unsigned count, bool starts,
                             Placing placing);
    static void ReplaceWide(CGNString& s, const Rule* rules, unsigned count, Placing placing);
    static bool GrowData(CGNString& s, std::uint64_t n, Owned<char>& old);
    static void StoreAnew(CGNString& s, const char* text, std::uint64_t offset, std::uint64_t n,
                          std::uint64_t spare = 0);
    static void CheckLayout();
    friend class ::CGNString;
};

}  // namespace genutil
