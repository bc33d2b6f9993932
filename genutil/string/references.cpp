// Decoding of XML and HTML character references in a CGNString.
#include <cstring>
#include <string_view>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "genutil/string/wide_view.h"

using genutil::NewText;
using Storage = genutil::StringStorage;
using Wide = unsigned short;

namespace {

struct Entity {
    std::string_view name;
    Wide character;
};
constexpr Entity kXmlEntities[] = {
    {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''},
};
constexpr Entity kHtmlEntities[] = {
    {"amp", '&'},   {"lt", '<'},      {"gt", '>'},      {"quot", '"'},
    {"apos", '\''}, {"nbsp", 0x00A0}, {"copy", 0x00A9}, {"reg", 0x00AE},
};

// A position in a text of 16-bit characters that is being read.
struct Place {
    const Wide* at;
    const Wide* end;

    bool Skip(std::string_view text) {
        if (static_cast<std::size_t>(end - at) < text.size()) return false;
        for (std::size_t i = 0; i < text.size(); ++i)
            if (at[i] != static_cast<unsigned char>(text[i])) return false;
        at += text.size();
        return true;
    }
};

// Returns the value of the digit at a position, or `base` if there is none.
unsigned DigitAt(const Place& place, unsigned base) {
    const Wide c = place.at < place.end ? *place.at : Wide{0};
    if (c >= '0' && c <= '9') return c - unsigned{'0'};
    const unsigned letter = c | 0x20u;
    return base == 16 && letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : base;
}

// Both functions read a reference after its "&" and move `place` past it. They return its
// character, or 0 if there is none.
//   number = "#" digits ";" | "#x" hexadecimal digits ";"
unsigned ReadNumber(Place& place) {
    const unsigned base = place.Skip("#x") || place.Skip("#X") ? 16 : place.Skip("#") ? 10 : 0;
    if (base == 0) return 0;
    unsigned number = 0, digits = 0;
    for (unsigned digit; (digit = DigitAt(place, base)) < base; ++place.at, ++digits)
        number = number > 0x10FFFF ? number : number * base + digit;
    const bool whole = digits > 0 && place.Skip(";");
    return whole && number <= 0x10FFFF && !genutil::IsSurrogate(number) ? number : 0;
}

template <std::size_t N>
unsigned ReadReference(Place& place, const Entity (&entities)[N]) {
    for (const Entity& entity : entities) {
        Place named = place;
        if (!named.Skip(entity.name) || !named.Skip(";")) continue;
        place = named;
        return entity.character;
    }
    return ReadNumber(place);
}

// Reads an HTML line break after its "<".
bool ReadBreak(Place& place) {
    Place tag = place;
    if (!tag.Skip("br") && !tag.Skip("BR")) return false;
    while (tag.Skip(" ")) {
    }
    tag.Skip("/");
    if (!tag.Skip(">")) return false;
    place = tag;
    return true;
}

// Appends a character as carried bytes. Returns false if it needs escape sequences, whose effect on
// invalid text is unknown.
bool PutBytes(const Wide* units, std::size_t count, Wide*& out) {
    char bytes[genutil::kMostNarrowBytes];
    const long n = genutil::ToNarrow(bytes, sizeof bytes, units, count);
    if (n > 1 && genutil::LongestNarrow() == 0) return false;
    for (long i = 0; i < n; ++i)
        *out++ = static_cast<Wide>(genutil::kRawByte + static_cast<unsigned char>(bytes[i]));
    return true;
}

// Appends a character. Returns false for 0 and for a character that the code set does not have.
bool Put(unsigned c, Wide*& out, bool broken) {
    Wide units[2] = {static_cast<Wide>(c), 0};
    std::size_t count = 1;
    if (c > 0xFFFF) {
        units[0] = static_cast<Wide>(0xD7C0 + (c >> 10));
        units[1] = static_cast<Wide>(0xDC00 | (c & 0x3FF));
        count = 2;
    }
    if (c == 0 || genutil::NarrowLength(units, count) < 0) return false;
    if (broken) return PutBytes(units, count, out);
    for (std::size_t i = 0; i < count; ++i) *out++ = units[i];
    return true;
}

template <std::size_t N>
std::size_t Decode(Place place, Wide* out, const Entity (&entities)[N], bool breaks, bool broken) {
    const Wide* const begin = out;
    while (place.at < place.end) {
        const Wide c = *place.at++;
        Place behind = place;
        if (c == '&' && Put(ReadReference(behind, entities), out, broken))
            place = behind;
        else if (breaks && c == '<' && ReadBreak(place))
            *out++ = '\n';
        else
            *out++ = c;
    }
    return static_cast<std::size_t>(out - begin);
}

// The result fits in the length of the text, because no reference is shorter than its character.
template <std::size_t N>
void DecodeReferences(CGNString& s, const Entity (&entities)[N], bool breaks) {
    if (!std::strpbrk(s, breaks ? "&<" : "&") || !Storage::EnsureWide(s)) return;
    const Storage::WideText wide = Storage::WideOf(s);
    const genutil::Owned<Wide> decoded(NewText<Wide>(wide.length));
    if (!decoded.Get()) return;
    const std::size_t count = Decode({wide.text, wide.text + wide.length}, decoded.Get(), entities,
                                     breaks, Storage::IsBroken(s));
    Storage::StoreEdited(s, decoded.Get(), count);
}

}  // namespace

void CGNString::DecodeXMLString() {
    DecodeReferences(*this, kXmlEntities, false);
}
void CGNString::DecodeHtmlString() {
    DecodeReferences(*this, kHtmlEntities, true);
}
