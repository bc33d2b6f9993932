// Reading a file or standard input, and choosing the encoding of its bytes.
#pragma once

#include <string>

#include "tools/genutil/encoding.h"

struct Input {
    std::string name;  // in messages
    std::string text;  // 16-bit units in little-endian order
    Encoding encoding;
    std::size_t markLength;  // length of the leading byte-order mark
    bool detected;
};

// Reads all bytes of a file. "-" is standard input. Returns false after a message.
bool ReadBytes(const std::string& path, std::string* bytes);

// Reads a file. Returns false after a message.
// @param encodingName a name that CheckEncodingName() has accepted; "auto" or empty detects the
//     encoding.
// @param guess false refuses a text whose encoding is uncertain.
bool ReadInput(const std::string& path, const std::string& encodingName, bool guess, Input* input);

// Returns true if the name of an encoding is known, or requests detection. Returns false after a
// message.
bool CheckEncodingName(const std::string& encodingName);

// Returns the name of a path in messages.
std::string DisplayName(const std::string& path);
