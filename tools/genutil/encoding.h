// Encodings by name, and what a text is encoded in.
#pragma once

#include <optional>
#include <string>

struct Encoding {
    int codeSet;             // enum mbCodeSet
    bool bigEndian = false;  // of 16-bit units
    bool marked = false;     // written with a byte-order mark, since its name leaves the order open
};

// The encoding that a name stands for; none for a name that is not known.
std::optional<Encoding> FindEncoding(const std::string& name);

std::string NameOf(Encoding encoding);
std::string ListEncodings();  // their names, wrapped in lines

// Brings big-endian text into the little-endian order that conversions read, and back.
void SwapUnits(std::string* text);

struct Detection {
    enum Kind { kAscii, kCertain, kEucJpOrShiftJis, kUnknown };
    Kind kind;
    Encoding encoding;       // how to read the text, unless unknown
    std::size_t markLength;  // of its byte-order mark
};
Detection Detect(const std::string& text);
std::string Describe(const Detection& detection);

// Bytes of the byte-order mark that a text begins with, in the encoding's own order.
std::size_t MarkLength(const std::string& text, Encoding encoding);
