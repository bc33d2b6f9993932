// Text that switches character sets by escape sequences and shifts: ISO-2022-JP, -CN and -KR. The
// characters are those of the EUC forms of the same sets, with the high bits cleared.
#include <cstring>

#include "genutil/jaconv/reader.h"
#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/pivot.h"
#include "genutil/mbutil/wide_convert.h"

namespace genutil {

namespace {

constexpr unsigned kEscape = 0x1B, kShiftOut = 0x0E, kShiftIn = 0x0F;
constexpr unsigned kHalfWidthKatakana = 0xFF61;  // byte 0xA1, or 0x21 in its own set

// ISO-2022-JP is read by jis::JisReader, and ShiftState has its values. The others shift out of
// ASCII and back (set is 0 or 1), to the character set that was designated before.
using jis::Set;
// Values of ShiftState::designated, one bit each.
enum Designated : std::uint8_t { kGb2312 = 1, kCnsPlane1 = 2, kCnsPlane2 = 4, kKsX1001 = 1 };

struct Escape {
    CodeForm form;
    char text[5];
    std::uint8_t value;  // bit of designated
    std::uint8_t keep;   // other bits that remain designated
};
constexpr Escape kEscapes[] = {
    {CodeForm::kIso2022Cn, "\x1B$)A", kGb2312, kCnsPlane2},
    {CodeForm::kIso2022Cn, "\x1B$)G", kCnsPlane1, kCnsPlane2},
    {CodeForm::kIso2022Cn, "\x1B$*H", kCnsPlane2, kGb2312 | kCnsPlane1},
    {CodeForm::kIso2022Kr, "\x1B$)C", kKsX1001, 0},
};

void Apply(const Escape& escape, ShiftState& state) {
    state.designated = static_cast<std::uint8_t>((state.designated & escape.keep) | escape.value);
}

// -- Reading ---------------------------------------------------------------------------------

// Steps over one escape sequence or shift, if there is one at the current position.
bool SkipControl(CodeForm form, Source& src) {
    if (src.at == src.end || *src.at > kEscape) return false;
    const std::size_t left = static_cast<std::size_t>(src.end - src.at);
    if (*src.at == kShiftIn || (*src.at == kShiftOut && (src.state.designated & 3))) {
        src.state.set = *src.at == kShiftOut;
        ++src.at;
        return true;
    }
    for (const Escape& escape : kEscapes) {
        const std::size_t length = std::strlen(escape.text);
        if (escape.form != form || left < length || std::memcmp(src.at, escape.text, length) != 0)
            continue;
        Apply(escape, src.state);
        src.at += length;
        return true;
    }
    return false;
}

bool IsSevenBit(unsigned byte) {
    return byte >= 0x21 && byte <= 0x7E;
}

bool IsSevenBitPair(const unsigned char* p, const unsigned char* end) {
    return end - p >= 2 && IsSevenBit(p[0]) && IsSevenBit(p[1]);
}

// Characters of plane 2 of CNS follow a single shift each.
bool IsSingleShift(CodeForm form, const Source& src) {
    return form == CodeForm::kIso2022Cn && (src.state.designated & kCnsPlane2) &&
           src.end - src.at >= 4 && src.at[0] == kEscape && src.at[1] == 'N' &&
           IsSevenBitPair(src.at + 2, src.end);
}

unsigned PairCharacter(const std::uint16_t* table, const unsigned char* p) {
    return table[CodePage::PairIndex(p[0] | 0x80u, p[1] | 0x80u)];
}

const std::uint16_t* CurrentTable(const CodePage& page, const ShiftState& state) {
    if (page.form == CodeForm::kIso2022Cn && (state.designated & kCnsPlane1))
        return page.secondBase->pairs.get();
    return page.base->pairs.get();
}

CodeRead ReadOne(const CodePage& page, const Source& src) {
    const unsigned byte = *src.at;
    if (IsSingleShift(page.form, src))
        return {PairCharacter(page.secondBase->prefixed.get(), src.at + 2), 4};
    if (byte >= 0x80 || byte == kEscape || byte == kShiftOut || byte == kShiftIn) return {0, 0};
    if (!IsSevenBit(byte) || src.state.set == 0) return {byte, 1};
    if (!IsSevenBitPair(src.at, src.end)) return {0, 0};
    return {PairCharacter(CurrentTable(page, src.state), src.at), 2};
}

// Reads a character or a shift of ISO-2022-JP. `character` receives its character or kNoCharacter.
jis::Unit ReadJapanese(const CodePage& page, jis::JisReader& reader, unsigned* character) {
    const unsigned pair = reader.Pair();
    const jis::Unit unit = pair ? jis::Unit{jis::Kind::kPair, 2, pair} : reader.Other();
    const auto in = [&unit](const std::uint16_t* table) {
        return table[CodePage::PairIndex(unit.code >> 8, unit.code & 0xFF)];
    };
    *character = unit.kind == jis::Kind::kAscii        ? unit.code
                 : unit.kind == jis::Kind::kKana       ? kHalfWidthKatakana + (unit.code - 0xA1)
                 : unit.kind == jis::Kind::kPair       ? in(page.base->pairs.get())
                 : unit.kind == jis::Kind::kSupplement ? in(page.base->prefixed.get())
                                                       : kNoCharacter;
    return unit;
}

jis::JisReader JapaneseReader(const Source& src) {
    jis::JisReader reader;
    reader.p = src.at;
    reader.end = src.end;
    reader.Begin(src.state);
    return reader;
}

Stop DecodeJapanese(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    jis::JisReader reader = JapaneseReader(src);
    Stop stop = Stop::kDone;
    while (stop == Stop::kDone && reader.p != reader.end) {
        if (src.open && reader.Left() < 4 && reader.IsCut()) {
            stop = Stop::kCut;
            break;
        }
        unsigned character;
        const jis::Unit unit = ReadJapanese(page, reader, &character);
        if (unit.kind == jis::Kind::kNothing) {
            reader.p += unit.length;
        } else if (character == kNoCharacter) {
            stop = Stop::kBad;
        } else if (outEnd - out < 2) {
            stop = Stop::kFull;
        } else {
            StoreUnit(out, character);
            out += 2;
            reader.p += unit.length;
        }
    }
    src.at = reader.p;
    src.state = reader.State();
    return stop;
}

// In ISO-2022-CN, designations end with the line.
void EndLine(CodeForm form, ShiftState& state) {
    if (form == CodeForm::kIso2022Cn) state = {};
}

// -- Writing ---------------------------------------------------------------------------------

struct Emission {
    unsigned char bytes[16];
    std::size_t length;
    ShiftState state;

    void Put(unsigned byte) { bytes[length++] = static_cast<unsigned char>(byte); }
    void PutSevenBit(unsigned cell) {
        Put(cell >> 8 & 0x7F);
        Put(cell & 0x7F);
    }
    void PutEscape(CodeForm form, unsigned value) {
        for (const Escape& escape : kEscapes) {
            if (escape.form != form || escape.value != value) continue;
            for (const char* p = escape.text; *p; ++p) Put(static_cast<unsigned char>(*p));
            return Apply(escape, state);
        }
    }
    void Shift(bool out) {
        if ((state.set != 0) == out) return;
        Put(out ? kShiftOut : kShiftIn);
        state.set = out;
    }
};

void EnterJapaneseSet(Emission& emission, Set set) {
    if (emission.state.set == static_cast<unsigned>(set)) return;
    emission.state.set = static_cast<std::uint16_t>(set);
    emission.state.escaped = 0;
    for (const char c : jis::EscapeTo(set)) emission.Put(static_cast<unsigned char>(c));
}

bool EmitJapanese(const CodePage& page, unsigned unit, Emission& emission) {
    const unsigned cell = page.base->Back(unit);
    if (cell == 0) return false;
    if (cell < kLowestPairCell) {
        EnterJapaneseSet(emission, Set::kSupplement);
        emission.PutSevenBit(cell);
    } else if (cell >> 8 == 0x8E) {
        EnterJapaneseSet(emission, Set::kKana);
        emission.Put(cell & 0x7F);
    } else {
        EnterJapaneseSet(emission, Set::kKanji);
        emission.PutSevenBit(cell);
    }
    return true;
}

bool EmitChinese(const CodePage& page, unsigned unit, Emission& emission) {
    unsigned cell = page.base->Back(unit), set = kGb2312;
    if (cell == 0) {
        cell = page.secondBase->Back(unit);
        set = cell < kLowestPairCell ? kCnsPlane2 : kCnsPlane1;
        if (cell == 0 || !(cell & 0x80)) return false;  // plane 3 cannot be designated here
    }
    if (!(emission.state.designated & set)) emission.PutEscape(CodeForm::kIso2022Cn, set);
    if (set == kCnsPlane2) {
        emission.Put(kEscape);
        emission.Put('N');
    } else {
        emission.Shift(true);
    }
    emission.PutSevenBit(cell);
    return true;
}

bool EmitKorean(const CodePage& page, unsigned unit, Emission& emission) {
    const unsigned cell = page.base->Back(unit);
    if (cell == 0) return false;
    emission.Shift(true);
    emission.PutSevenBit(cell);
    return true;
}

// Control characters that would be read as shifts have no code here. An escape character has one in
// ISO-2022-JP, but the character that would make it an escape sequence has not.
bool EmitAscii(CodeForm form, unsigned unit, Emission& emission) {
    if (unit == kShiftOut || unit == kShiftIn) return false;
    if (form == CodeForm::kIso2022Jp) {
        EnterJapaneseSet(emission, Set::kAscii);
        if (!jis::NextEscaped(emission.state.escaped, unit, &emission.state.escaped)) return false;
    } else {
        if (unit == kEscape) return false;
        emission.Shift(false);
    }
    emission.Put(unit);
    if (unit == '\n') EndLine(form, emission.state);
    return true;
}

bool Emit(const CodePage& page, unsigned unit, Emission& emission) {
    if (page.form == CodeForm::kIso2022Kr && !emission.state.begun) {
        emission.PutEscape(page.form, kKsX1001);  // announced once, at the start of the text
        emission.state.begun = 1;
    }
    if (unit < 0x80) return EmitAscii(page.form, unit, emission);
    if (page.form == CodeForm::kIso2022Jp) return EmitJapanese(page, unit, emission);
    if (page.form == CodeForm::kIso2022Cn) return EmitChinese(page, unit, emission);
    return EmitKorean(page, unit, emission);
}

std::size_t ClosingLength(CodeForm form, const ShiftState& state) {
    if (state.set == 0) return 0;
    return form == CodeForm::kIso2022Jp ? 3 : 1;
}

// Returns true if the bytes from p to end begin an escape sequence of the code set, or a single
// shift and its pair.
bool IsCutEscape(CodeForm form, const unsigned char* p, const unsigned char* end) {
    const auto left = static_cast<std::size_t>(end - p);
    for (const Escape& escape : kEscapes)
        if (escape.form == form && left < std::strlen(escape.text) &&
            std::memcmp(p, escape.text, left) == 0)
            return true;
    return form == CodeForm::kIso2022Cn && left < 4 && (left < 2 || p[1] == 'N') &&
           (left < 3 || IsSevenBit(p[2]));
}

}  // namespace

bool IsCutIso2022(const CodePage& page, const Source& src) {
    if (page.form == CodeForm::kIso2022Jp) return JapaneseReader(src).IsCut();
    if (*src.at == kEscape) return IsCutEscape(page.form, src.at, src.end);
    return src.end - src.at == 1 && src.state.set != 0 && IsSevenBit(*src.at);
}

Stop DecodeIso2022(const CodePage& page, Source& src, unsigned char*& out, unsigned char* outEnd) {
    if (page.form == CodeForm::kIso2022Jp) return DecodeJapanese(page, src, out, outEnd);
    for (;;) {
        while (SkipControl(page.form, src)) {
        }
        if (src.at == src.end) return Stop::kDone;
        const CodeRead read = ReadOne(page, src);
        if (read.length == 0 || read.character == kNoCharacter) return Stop::kBad;
        if (outEnd - out < 2) return Stop::kFull;
        StoreUnit(out, read.character);
        out += 2;
        src.at += read.length;
        if (read.character == '\n') EndLine(page.form, src.state);
    }
}

std::size_t BadLengthIso2022(const CodePage& page, const Source& src) {
    if (page.form == CodeForm::kIso2022Jp) {
        jis::JisReader reader = JapaneseReader(src);
        unsigned character;
        return ReadJapanese(page, reader, &character).length;
    }
    const CodeRead read = ReadOne(page, src);
    return read.length == 0 ? 1 : read.length;
}

static Group ReadGroupJapanese(const CodePage& page, Source& src) {
    const unsigned byte = *src.at;
    jis::JisReader reader = JapaneseReader(src);
    unsigned character;
    const jis::Unit unit = ReadJapanese(page, reader, &character);
    src.at += unit.length;
    src.state = reader.State();
    if (unit.kind == jis::Kind::kLost) return {1, kRawByte + byte};
    const bool isOwn = unit.kind == jis::Kind::kAscii;
    return {unit.length, isOwn ? byte : kFirstByte + byte};
}

Group ReadGroupIso2022(const CodePage& page, Source& src) {
    if (page.form == CodeForm::kIso2022Jp) return ReadGroupJapanese(page, src);
    const unsigned byte = *src.at;
    const unsigned char* const begin = src.at;
    if (SkipControl(page.form, src))
        return {static_cast<unsigned>(src.at - begin), kFirstByte + byte};
    const CodeRead read = ReadOne(page, src);
    const unsigned length = read.length == 0 ? 1 : read.length;
    src.at += length;
    if (read.length == 0) return {1, kRawByte + byte};
    if (read.character == '\n') EndLine(page.form, src.state);
    const bool isOwn = length == 1 && read.character == byte;
    return {length, isOwn ? byte : kFirstByte + byte};
}

Stop EncodeIso2022(const CodePage& page, const unsigned char*& units, const unsigned char* unitsEnd,
                   Sink& dst) {
    for (; units < unitsEnd; units += 2) {
        Emission emission{{}, 0, dst.state};
        if (!Emit(page, LoadUnit(units), emission)) return Stop::kBad;
        const std::size_t need = emission.length + ClosingLength(page.form, emission.state);
        if (static_cast<std::size_t>(dst.end - dst.at) < need) return Stop::kFull;
        std::memcpy(dst.at, emission.bytes, emission.length);
        dst.at += emission.length;
        dst.state = emission.state;
    }
    return Stop::kDone;
}

bool CloseIso2022(const CodePage& page, Sink& dst) {
    if (dst.state.set == 0) return true;
    Emission emission{{}, 0, dst.state};
    if (page.form == CodeForm::kIso2022Jp)
        EnterJapaneseSet(emission, Set::kAscii);
    else
        emission.Shift(false);
    if (static_cast<std::size_t>(dst.end - dst.at) < emission.length) return false;
    std::memcpy(dst.at, emission.bytes, emission.length);
    dst.at += emission.length;
    dst.state = emission.state;
    return true;
}

}  // namespace genutil
