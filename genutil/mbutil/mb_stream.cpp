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

}  // namespace

// The stream is never moved: a line that does not fit is cut, and the rest of its piece is lost.
char* mbfgets(char* buf, int n, FILE* stream, int fileCodeSet) {
    EnsureInitialised();
    if (!buf || n <= 0) return nullptr;
    if (!g_codeSetState.multiByte) return std::fgets(buf, n, stream);
    const std::uint64_t size = static_cast<unsigned>(n);
    const Scratch scratch(size + ConvertedSize(size));
    char* const line = scratch.Bytes();
    if (!line || !std::fgets(line, n, stream)) return nullptr;
    char* const converted = line + size;
    convertStrExt(line, fileCodeSet, converted, g_codeSetState.codeSet);
    const auto room = static_cast<unsigned>(n) - 1;
    if (mbstrncpyi(buf, converted, room) == room) buf[room] = 0;
    return buf;
}

// Every text ends in ASCII, so that texts written one after the other are one text.
int mbfputs(const char* s, FILE* stream, int fileCodeSet) {
    EnsureInitialised();
    if (!g_codeSetState.multiByte) return s ? std::fputs(s, stream) : 0;
    if (!s) return 0;
    const int current = g_codeSetState.codeSet;
    const Converter convert = fileCodeSet ? FindRelatedConverter(current, fileCodeSet) : nullptr;
    if (!convert) return std::fputs(s, stream);
    const std::size_t length = std::strlen(s);
    const std::size_t size = mbConvertBound(length, current, fileCodeSet);
    const Scratch converted(size);
    const auto out = reinterpret_cast<unsigned char*>(converted.Bytes());
    if (!out) return -1;
    Transfer t{Bytes(s), Bytes(s) + length, out, out + size - 1, {}};
    if (!convert(t)) return -1;  // its tables could not be allocated
    *t.dst = 0;
    return std::fputs(converted.Bytes(), stream);
}

unsigned mbfreadstring(char* buf, unsigned n, FILE* stream) {
    EnsureInitialised();
    const std::size_t count = std::fread(buf, 1, n, stream);
    if (!g_codeSetState.multiByte) return static_cast<unsigned>(count);
    buf[count] = 0;
    if (count < n || n == 0 || !g_currentStep) return static_cast<unsigned>(count);
    std::size_t cut = CutCharacter(buf, count, g_codeSetState.codeSet);
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
