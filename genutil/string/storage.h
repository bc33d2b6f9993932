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

// Works on the members of a CGNString, out of sight of its exported header.
struct StringStorage {
    static bool OwnsData(const CGNString& s);
    static std::uint32_t Capacity(const CGNString& s) { return s.m_capacity; }
    static void Swap(CGNString& a, CGNString& b);

    // The text becomes its first `offset` bytes and n bytes of `text`, which may lie in it itself.
    static void Store(CGNString& s, const char* text, std::uint64_t offset, std::uint64_t n);
    // The text becomes n bytes of `text`, which may lie in it itself. Where the buffer is too small
    // the new one has room to spare, so that values of much the same length need no other. False,
    // with the text as it was, when memory runs out.
    static bool Put(CGNString& s, const char* text, std::uint64_t n);
    // The text becomes n bytes of `text` and 0 bytes up to `length`, in a buffer of that size.
    static void Take(CGNString& s, const char* text, std::uint64_t n, std::uint64_t length);

    // The text becomes what is in a buffer of that capacity, which it takes over.
    static void Adopt(CGNString& s, char* text, std::uint64_t length, std::uint64_t capacity);
    // What stands from `begin` to `end` in the text, up to its first 0, becomes another.
    static void Splice(CGNString& s, const char* begin, const char* end, std::string_view other);
    // The text becomes `count` characters at `wide`, which may lie in its own 16-bit copy.
    static void StoreWide(CGNString& s, const unsigned short* wide, std::uint64_t count);

    // Replaces what the rules say, at each place by the first that fits there, in one go and one
    // new buffer of the exact size; at most UnitFinder's number of rules. A text ends at its first
    // 0. True when there is a new text.
    static bool Replace(CGNString& s, const Rule* rules, unsigned count, Units units);

    // The 16-bit copy: makes room, drops it, builds it if there is none (false without memory).
    static bool GrowWide(CGNString& s, std::uint64_t n, Owned<unsigned short>& old);
    static void DropWide(const CGNString& s);
    static bool EnsureWide(const CGNString& s);

    // The place of some characters from the one of number `start` on, which must be one that there
    // is; -1 when they stand nowhere.
    static int Find(const CGNString& s, const WideView& wanted, int start);

    // Builds the bytes from the 16-bit copy; `bytesPerCharacter` limits them where a character does
    // not convert. Without memory the bytes win, since they are what the string is: the 16-bit
    // copy, changed or new, is dropped. False then.
    static bool RebuildData(const CGNString& s, unsigned bytesPerCharacter);

  private:
    static bool ReplaceBytes(CGNString& s, const Rule* rules, unsigned count, bool starts);
    static bool ReplaceWide(CGNString& s, const Rule* rules, unsigned count);
    static bool GrowData(CGNString& s, std::uint64_t n, Owned<char>& old);
    static void StoreAnew(CGNString& s, const char* text, std::uint64_t offset, std::uint64_t n,
                          std::uint64_t spare = 0);
    static void CheckLayout();
    friend class ::CGNString;
};

}  // namespace genutil
