// Encodings by name.
#pragma once

#include <optional>
#include <string>

struct Encoding {
    int codeSet;             // a value of enum mbCodeSet
    bool bigEndian = false;  // byte order of 16-bit units
    bool marked = false;     // written with a byte-order mark, because its name leaves the byte
                             // order open
};

// Returns the encoding with a name, or nothing if the name is unknown.
std::optional<Encoding> FindEncoding(const std::string& name);

std::string NameOf(Encoding encoding);
std::string ListEncodings();  // their names, wrapped in lines

// Converts big-endian text to the little-endian order that conversions read, and back.
void SwapUnits(std::string* text);

// Returns the length of the byte-order mark at the start of a text, in the encoding's own byte
// order.
std::size_t MarkLength(const std::string& text, Encoding encoding);
