// Byte by byte between the ISO 8859 and the Windows form of the same text.
#include <array>
#include <cstdint>

#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/transcode.h"
#include "mbutil.h"

namespace genutil {

namespace {

// The counterpart of each byte; 0 where there is none.
using ByteTable = std::array<std::uint8_t, 256>;

ByteTable MakeTable(int from, int to) {
    ByteTable table{};
    const CodePage* source = FindCodePage(from);
    const CodePage* target = FindCodePage(to);
    for (unsigned byte = 0; byte < 256; ++byte) {
        const unsigned character = source ? source->bytes[byte] : kNoCharacter;
        table[byte] = static_cast<std::uint8_t>(
            byte < 0x80 ? byte
                        : (character == kNoCharacter || !target ? 0 : target->Back(character)));
    }
    return table;
}

bool MapBytes(Transfer& t, const ByteTable& table) {
    const std::ptrdiff_t left = t.srcEnd - t.src, room = t.dstEnd - t.dst;
    const unsigned char* const end = t.src + (left < room ? left : room);
    while (t.src < end) {
        const std::size_t ascii = CopyAsciiRun(t.dst, t.src, static_cast<std::size_t>(end - t.src));
        t.src += ascii;
        t.dst += ascii;
        for (; t.src < end && *t.src >= 0x80; ++t.src) {
            const std::uint8_t byte = table[*t.src];
            if (byte == 0) t.losses.Add(t.src);
            *t.dst++ = byte ? byte : '?';
        }
    }
    return t.src == t.srcEnd;
}

}  // namespace

bool Latin2ToWindows1250(Transfer& t) {
    static const ByteTable table = MakeTable(mb8859_2, mbWindows1250);
    return MapBytes(t, table);
}

bool Windows1250ToLatin2(Transfer& t) {
    static const ByteTable table = MakeTable(mbWindows1250, mb8859_2);
    return MapBytes(t, table);
}

bool Cyrillic8859ToWindows1251(Transfer& t) {
    static const ByteTable table = MakeTable(mb8859_5, mbWindows1251);
    return MapBytes(t, table);
}

bool Windows1251ToCyrillic8859(Transfer& t) {
    static const ByteTable table = MakeTable(mbWindows1251, mb8859_5);
    return MapBytes(t, table);
}

}  // namespace genutil
