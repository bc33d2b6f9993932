// Real text to measure with: the Japanese manual pages of the machine that built the programs, and
// what its programs say in Traditional Chinese.
#pragma once

#include <string>

// The pages in an encoding by iconv's name for it, several MB; ends the program when it is not
// among those of make_texts.py.
std::string PagesIn(const char* encoding);

// The messages, in BIG5 or EUC-TW.
std::string MessagesIn(const char* encoding);

// A text of one code set in another, as the library converts it.
std::string Convert(const std::string& text, int from, int to);
