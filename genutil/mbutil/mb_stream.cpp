// Lines and blocks of streams in another code set.
#include <cstdio>
#include <cstring>

#include "genutil/mbutil/align.h"
#include "genutil/mbutil/cut_character.h"
#include "genutil/mbutil/scratch.h"
#include "genutil/mbutil/step.h"
#include "genutil/mbutil/transcode.h"
#include "osutil/platform/file/streams.h"

using namespace genutil;

namespace {

// Moves a stream back so that the last n bytes are read again. A line end may be two bytes in the
// file, so the result is verified.
bool Unread(std::FILE* stream, const char* bytes, std::size_t n) {
    const std::int64_t here = platform::PlaceIn(stream);
    for (int extra = 0; extra <= 1; ++extra) {
        const std::int64_t target = here - static_cast<std::int64_t>(n) - extra;
        if (here < 0 || !platform::GoTo(stream, target)) return false;
        std::size_t same = 0;
        while (same < n && std::getc(stream) == static_cast<unsigned char>(bytes[same])) ++same;
        if (same == n) return platform::GoTo(stream, target);
    }
    platform::GoTo(stream, here);
    return false;
}

// A JIS line that was longer than its reader's buffer continues in the shift state in which it was
// cut. The latest one of each thread is remembered.
struct CutLine {
    std::FILE* stream;
    std::int64_t position;
    Shift shift;
};
thread_local CutLine g_cutLine;

Shift ShiftAt(std::FILE* stream) {
    const bool goesOn =
        g_cutLine.stream == stream && g_cutLine.position == platform::PlaceIn(stream);
    return goesOn ? g_cutLine.shift : Shift{};
}

void RememberShift(std::FILE* stream, const Shift& shift) {
    g_cutLine = shift.escape[0] ? CutLine{stream, platform::PlaceIn(stream), shift} : CutLine{};
}

}  // namespace

char* mbfgets(char* buf, int n, FILE* stream, int fileCodeSet) {
    EnsureInitialised();
    if (!buf || n <= 0) return nullptr;
    if (!g_codeSetState.multiByte) return std::fgets(buf, n, stream);

    const Shift before = fileCodeSet == mbJis ? ShiftAt(stream) : Shift{};
    const std::size_t prefix = std::strlen(before.escape);
    const Scratch raw(std::uint64_t{2} * static_cast<unsigned>(n) + prefix);
    if (!raw.Bytes()) return nullptr;
    char* const line = raw.Bytes() + prefix;
    std::memcpy(raw.Bytes(), before.escape, prefix);
    if (!std::fgets(line, n, stream)) return nullptr;
    const std::size_t length = std::strlen(line);

    Shift shift;
    std::size_t keep = length;
    if (length + 1 == static_cast<std::size_t>(n))
        keep -= CutCharacter(raw.Bytes(), prefix + length, fileCodeSet, &shift);

    const auto out = reinterpret_cast<unsigned char*>(buf);
    const unsigned char* const from = Bytes(raw.Bytes());
    Transfer t{from, from + prefix + keep, out, out + n - 1, {}};
    RelatedConverter(fileCodeSet, g_codeSetState.codeSet)(t);
    std::size_t consumed = static_cast<std::size_t>(t.src - from);
    if (t.dst == out && consumed <= prefix) {  // not even one character fits: its bytes are copied
                                               // unchanged
        std::memcpy(buf, line, length);
        t.dst += length;
        consumed = prefix + length;
    }
    *t.dst = 0;
    consumed -= prefix;
    if (consumed < length) Unread(stream, line + consumed, length - consumed);
    if (fileCodeSet == mbJis) {
        shift = {};
        CutCharacter(raw.Bytes(), prefix + consumed, mbJis, &shift);
        RememberShift(stream, shift);
    }
    return buf;
}

int mbfputs(const char* s, FILE* stream, int fileCodeSet) {
    EnsureInitialised();
    if (!g_codeSetState.multiByte) return s ? std::fputs(s, stream) : 0;
    if (!s) return 0;
    if (fileCodeSet == 0) return std::fputs(s, stream);
    const Scratch converted(ConvertedSize(std::strlen(s)));
    if (!converted.Bytes()) return -1;
    return std::fputs(convertStrExt(s, g_codeSetState.codeSet, converted.Bytes(), fileCodeSet),
                      stream);
}

unsigned mbfreadstring(char* buf, unsigned n, FILE* stream) {
    EnsureInitialised();
    const std::size_t count = std::fread(buf, 1, n, stream);
    if (!g_codeSetState.multiByte) return static_cast<unsigned>(count);
    buf[count] = 0;
    if (count < n || n == 0 || !g_currentStep) return static_cast<unsigned>(count);
    Shift none;
    std::size_t cut = CutCharacter(buf, count, g_codeSetState.codeSet, &none);
    // A last byte that is not a character counts as the first of two.
    if (!cut && CharacterLength(*g_currentStep, Bytes(buf) + count - 1, 1) < 0 &&
        AlignToCharacter(*g_currentStep, Bytes(buf), count - 1) == count - 1)
        cut = 1;
    // A character that is longer than the block is delivered in parts; otherwise no read would make
    // progress.
    if (!cut || cut == count || !Unread(stream, buf + count - cut, cut)) return n;
    buf[count - cut] = 0;
    return static_cast<unsigned>(count - cut);
}
