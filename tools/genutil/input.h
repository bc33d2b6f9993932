// Reading a file, or the standard input, and deciding how to read its bytes.
#pragma once

#include <string>

#include "tools/genutil/encoding.h"

struct Input {
    std::string name;  // as messages give it
    std::string text;  // 16-bit units in little-endian order
    Encoding encoding;
    std::size_t markLength;  // of the byte-order mark that the text begins with
    bool detected;
};

// Reads all bytes of a file; "-" is the standard input. False after a message.
bool ReadBytes(const std::string& path, std::string* bytes);

// Reads a file in the encoding of that (checked) name, "auto" or empty to detect it. False after a
// message.
bool ReadInput(const std::string& path, const std::string& encodingName, Input* input);

// Whether an encoding's name is known, or stands for detection. False after a message.
bool CheckEncodingName(const std::string& encodingName);

// The name of a path in messages.
std::string DisplayName(const std::string& path);
