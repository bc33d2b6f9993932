// Detection of a text's Japanese encoding, from bytes that only one encoding can contain.
#include <bit>
#include <cstdio>

#include "genutil/simd.h"
#include "mbutil.h"

namespace genutil {

namespace {

constexpr int kEnd = EOF, kUndecided = 6;

class Memory {
  public:
    Memory(const char* bytes, std::size_t n)
        : m_start(reinterpret_cast<const unsigned char*>(bytes)), m_p(m_start), m_end(m_p + n) {}
    int Next() { return m_p == m_end ? kEnd : *m_p++; }
    std::size_t Consumed() const { return static_cast<std::size_t>(m_p - m_start); }

    // Skips bytes that do not distinguish encodings, at most to the end of the text.
    void SkipPlain() {
        while (m_end - m_p >= 16) {
            const simd::Vector block = simd::Load(m_p);
            const simd::Vector escape = simd::Equal8(block, simd::Splat8(0x1B));
            if (const unsigned stop = simd::TopBits(block | escape)) {
                m_p += std::countr_zero(stop);
                return;
            }
            m_p += 16;
        }
    }

  private:
    const unsigned char *m_start, *m_p, *m_end;
};

class Stream {
  public:
    explicit Stream(std::FILE* stream) : m_stream(stream) {}
    int Next() { return std::getc(m_stream); }
    void SkipPlain() {}

  private:
    std::FILE* m_stream;
};

// A byte value, or kEnd, which is not in any range.
constexpr bool In(int c, int low, int high) {
    return c >= low && c <= high;
}
// Lead bytes of Shift-JIS that do not begin a character in EUC-JP. 0x8E begins half-width katakana
// there.
constexpr bool OnlyShiftJisLead(int c) {
    return In(c, 0x81, 0x9F) && c != 0x8E;
}
constexpr bool OnlyEucCell(int c) {
    return c == 0xFD || c == 0xFE;
}

// Each function continues reading after the byte in its name and returns the result from there on.

template <class Bytes>
int AfterEscape(Bytes& bytes, int result) {
    int c = bytes.Next();
    if (c == 'K') return mbJis;
    if (c != '$') return result;
    c = bytes.Next();
    return c == 'B' || c == '@' ? mbJis : result;
}

template <class Bytes>
int AfterKanaShift(Bytes& bytes, int result) {
    const int c = bytes.Next();
    if (In(c, 0x40, 0x7E) || In(c, 0x80, 0xA0) || In(c, 0xE0, 0xFC)) return mbShiftJis;
    return In(c, 0xA1, 0xDF) ? kUndecided : result;
}

// Either EUC-JP, or half-width katakana of Shift-JIS followed by a lead byte. The rest of the word
// decides. The byte after the deciding one, and the one that ends the word, are also read.
template <class Bytes>
int AfterKanaOrPair(Bytes& bytes, int c) {
    int result = kUndecided;
    while (c >= 0x40 && result == kUndecided) {
        if (OnlyShiftJisLead(c)) result = mbShiftJis;
        if (OnlyEucCell(c)) result = mbEucJp;
        c = bytes.Next();
    }
    return result;
}

// A single byte at the end counts as katakana.
template <class Bytes>
int AfterKana(Bytes& bytes, int result) {
    const int c = bytes.Next();
    if (In(c, 0xA1, 0xDF)) return kUndecided;
    if (In(c, 0xF0, 0xFE)) return mbEucJp;
    if (In(c, 0xE0, 0xEF)) return AfterKanaOrPair(bytes, c);
    return c <= 0x9F ? mbShiftJis : result;
}

template <class Bytes>
int AfterCommonLead(Bytes& bytes, int result) {
    const int c = bytes.Next();
    if (In(c, 0x40, 0x7E) || In(c, 0x80, 0xA0)) return mbShiftJis;
    if (OnlyEucCell(c)) return mbEucJp;
    return In(c, 0xA1, 0xFC) ? kUndecided : result;
}

template <class Bytes>
int Detect(Bytes& bytes) {
    int result = 0;
    while (result == 0 || result == kUndecided) {
        const int c = bytes.Next();
        if (c == kEnd) break;
        if (In(c, 0xA1, 0xDF))
            result = AfterKana(bytes, result);
        else if (c == 0x1B)
            result = AfterEscape(bytes, result);
        else if (c < 0x80)
            bytes.SkipPlain();
        else if (OnlyShiftJisLead(c))
            result = mbShiftJis;
        else if (c == 0x8E)
            result = AfterKanaShift(bytes, result);
        else if (In(c, 0xE0, 0xEF))
            result = AfterCommonLead(bytes, result);
        else if (In(c, 0xF0, 0xFE))
            result = mbEucJp;
    }
    return result;
}

}  // namespace

}  // namespace genutil

int DetectJPCodeType(FILE* stream) {
    genutil::Stream bytes(stream);
    return genutil::Detect(bytes);
}

int mbDetectJapanese(const char* bytes, size_t n, size_t* consumed) {
    genutil::Memory memory(bytes, bytes == nullptr ? 0 : n);
    const int result = genutil::Detect(memory);
    if (consumed != nullptr) *consumed = memory.Consumed();
    return result;
}
