#include "genutil/date/pattern.h"

#include <atomic>
#include <cstring>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "mbutil.h"

namespace genutil {

struct Pattern::Elements {
    std::uint32_t hash, textLength, count;
    int codeSet;
    PatternLetters letters;
    PatternWalk walk;

    PatternElement* List() { return reinterpret_cast<PatternElement*>(this + 1); }
    const PatternElement* List() const { return reinterpret_cast<const PatternElement*>(this + 1); }
    const char* Text() const { return reinterpret_cast<const char*>(List() + count); }
};

namespace {

bool IsLetter(char c, PatternLetters letters) {
    switch (c) {
        case 'd':
        case 'M':
        case 'y':
        case 'g':
        case 'W':
            return letters == PatternLetters::kDate;
        case 'H':
        case 'h':
        case 'm':
        case 's':
        case 't':
            return letters == PatternLetters::kTime;
        default:
            return false;
    }
}

std::uint32_t CharacterLength(const char* p, PatternWalk walk) {
    if (walk == PatternWalk::kBytes) return 1;
    return static_cast<std::uint32_t>(mbbytesinchar(reinterpret_cast<const unsigned char*>(p)));
}

// Stores the elements of a text at `out`, or counts them if it is null.
std::uint32_t Split(const char* text, std::uint32_t length, PatternLetters letters,
                    PatternWalk walk, PatternElement* out) {
    std::uint32_t count = 0;
    for (std::uint32_t at = 0; at < length;) {
        PatternElement element = {PatternElement::kOther, 0, at, 1};
        if (text[at] == '\'') {
            const auto* close = static_cast<const char*>(
                std::memchr(text + at + 1, '\'', std::size_t{length} - at - 1));
            element.kind = close ? PatternElement::kQuoted : PatternElement::kUnclosed;
            element.at = ++at;
            element.length = close ? static_cast<std::uint32_t>(close - text) - at : length - at;
            at += element.length + (close != nullptr);
        } else if (IsLetter(text[at], letters)) {
            element.kind = PatternElement::kRun;
            element.letter = text[at];
            while (at + element.length < length && text[at + element.length] == element.letter)
                ++element.length;
            at += element.length;
        } else {
            element.length = CharacterLength(text + at, walk);
            if (element.length > length - at) element.length = length - at;
            at += element.length;
        }
        if (out) out[count] = element;
        ++count;
    }
    return count;
}

std::uint32_t Hash(const char* text, std::uint32_t length, std::uint32_t seed) {
    std::uint64_t hash = seed;
    for (; length != 0;) {
        const std::uint32_t n = length < 8 ? length : 8;
        std::uint64_t word = n;
        std::memcpy(&word, text, n);
        hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
        hash ^= hash >> 29;
        text += n;
        length -= n;
    }
    return static_cast<std::uint32_t>(hash);
}

// Patterns in use, in an open-addressing hash table without removal. A process has a few. Patterns
// that do not fit are decomposed each time.
constexpr std::size_t kSlots = 256, kProbes = 8;
constexpr std::uint32_t kLongestKept = 128;

}  // namespace

Pattern::Elements* Pattern::TakeApart(const CGNString& text, PatternLetters letters,
                                      PatternWalk walk) {
    const std::uint32_t length = text.GetLength();
    const std::uint32_t count = Split(text, length, letters, walk, nullptr);
    const std::uint64_t size =
        sizeof(Elements) + std::uint64_t{count} * sizeof(PatternElement) + length + 1;
    auto* elements = static_cast<Elements*>(Allocate(size));
    if (!AssertAllocation(elements != nullptr, "genutil/pattern", __LINE__)) return nullptr;
    *elements = {0, length, count, mbGetLocaleCodeSet(), letters, walk};
    Split(text, length, letters, walk, elements->List());
    std::memcpy(const_cast<char*>(elements->Text()), text, std::size_t{length} + 1);
    return elements;
}

Pattern::Pattern(const CGNString& text, PatternLetters letters, PatternWalk walk)
    : m_elements(nullptr), m_owned(false) {
    Find(text, letters, walk);
    Take(m_elements);
}

bool Pattern::IsOfCodeSet() const {
    return m_elements->codeSet == mbGetLocaleCodeSet();
}

void Pattern::Take(const Elements* elements) {
    if (!elements) return;
    m_begin = elements->List();
    m_end = m_begin + elements->count;
    m_text = elements->Text();
    m_length = elements->textLength;
}

bool Pattern::EndsWith(const CGNString& text) const {
    const std::uint32_t length = text.GetLength();
    return length != 0 && length <= m_length &&
           std::memcmp(m_text + m_length - length, text, length) == 0;
}

void Pattern::Find(const CGNString& text, PatternLetters letters, PatternWalk walk) {
    m_elements = nullptr;
    static std::atomic<Elements*> kept[kSlots];
    const std::uint32_t length = text.GetLength();
    const int codeSet = mbGetLocaleCodeSet();
    const std::uint32_t seed = 2166136261u + static_cast<std::uint32_t>(codeSet) * 4 +
                               static_cast<std::uint32_t>(letters) * 2 +
                               static_cast<std::uint32_t>(walk);
    const std::uint32_t hash = length <= kLongestKept ? Hash(text, length, seed) : 0;
    for (std::size_t probe = 0; length <= kLongestKept && probe < kProbes; ++probe) {
        std::atomic<Elements*>& slot = kept[(hash + probe) % kSlots];
        Elements* found = slot.load(std::memory_order_acquire);
        if (!found) {
            Elements* made = TakeApart(text, letters, walk);
            if (!made) return;
            made->hash = hash;
            m_elements = made;
            m_owned = !slot.compare_exchange_strong(found, made, std::memory_order_acq_rel);
            return;
        }
        if (found->hash == hash && found->textLength == length && found->codeSet == codeSet &&
            found->letters == letters && found->walk == walk &&
            std::memcmp(found->Text(), static_cast<const char*>(text), length) == 0) {
            m_elements = found;
            return;
        }
    }
    m_elements = TakeApart(text, letters, walk);
    m_owned = true;
}

Pattern::~Pattern() {
    if (m_owned) Release(const_cast<Elements*>(m_elements));
}

}  // namespace genutil
