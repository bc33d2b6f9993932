// The look at all bytes of a text.
#include <algorithm>
#include <cstring>

#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/detect_candidate.h"

namespace genutil::detect {

namespace {

constexpr std::size_t kPart = 64;

bool IsStrangeControl(unsigned byte) {
    return byte == 0x7F || (byte < 0x20 && !(byte >= '\b' && byte <= '\r') && byte != 0x1A &&
                            byte != 0x1B && byte != 0x0E && byte != 0x0F);
}

void Count(Text* text) {
    std::size_t counts[256] = {};
    for (std::size_t i = 0; i < text->length; ++i) ++counts[text->bytes[i]];
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (counts[byte] == 0) continue;
        text->present[byte / 64] |= std::uint64_t{1} << byte % 64;
        if (byte >= 0x80) text->high += counts[byte];
        if (IsStrangeControl(byte)) text->controls += counts[byte];
        if (byte == 0x1B || byte == 0x0E || byte == 0x0F) text->escapes += counts[byte];
    }
}

void TakeSample(Text* text) {
    if (text->length <= kSampleSize) {
        std::memcpy(text->sample, text->bytes, text->length);
        text->sampleLength = text->length;
        return;
    }
    std::size_t end = 0;  // of the part taken last
    while (text->sampleLength + kPart < kSampleSize) {
        const std::size_t at = end + AsciiRun(text->bytes + end, text->length - end);
        if (at == text->length) break;
        const std::size_t start = std::max(end, at - std::min(at, kPart / 4));
        if (start > end) text->sample[text->sampleLength++] = '\n';
        end = std::min(text->length, start + kPart);
        const std::size_t n = std::min(end - start, kSampleSize - text->sampleLength);
        std::memcpy(text->sample + text->sampleLength, text->bytes + start, n);
        text->sampleLength += n;
    }
}

}  // namespace

void Examine(const unsigned char* bytes, std::size_t length, Text* text) {
    text->bytes = bytes;
    text->length = length;
    Count(text);
    if (text->high != 0) TakeSample(text);
}

bool Hint::Is(const char* name) const {
    return language[0] != '\0' && std::strcmp(language, name) == 0;
}

void Candidates::Add(const Candidate& candidate) {
    for (std::size_t i = 0; i < m_count; ++i) {
        Candidate& known = m_all[i];
        if (std::strcmp(known.name, candidate.name) != 0) continue;
        if (candidate.cost < known.cost) known = candidate;
        return;
    }
    if (m_count < m_all.size()) m_all[m_count++] = candidate;
}

void Candidates::Sort() {
    std::sort(m_all.data(), m_all.data() + m_count,
              [](const Candidate& a, const Candidate& b) { return a.cost < b.cost; });
}

}  // namespace genutil::detect
