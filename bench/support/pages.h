// Real text to measure with: the Japanese manual pages of the machine (apt-get install
// manpages-ja).
#pragma once

#include <string>

// All of text in another encoding by the C library's iconv, leaving out what does not convert.
std::string Iconv(const char* to, const char* from, std::string text);

// What a shell command prints.
std::string ReadCommand(const char* command);

// The pages in an encoding known to iconv, several MB; ends the program when there are none.
std::string PagesIn(const char* encoding);
