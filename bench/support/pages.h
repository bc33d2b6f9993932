// Real text for measurements: the Japanese manual pages of the machine that built the programs, and
// the messages of its programs in Traditional Chinese.
#pragma once

#include <string>

// Returns several MB of manual pages in an encoding, by its name in iconv. Terminates the program
// if make_texts.py did not produce that encoding.
std::string PagesIn(const char* encoding);

// Returns the messages in BIG5 or EUC-TW.
std::string MessagesIn(const char* encoding);

// Converts a text between two code sets by the library.
std::string Convert(const std::string& text, int from, int to);
