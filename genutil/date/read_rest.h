// The text that a reader of dates and times is given, and the rest that it leaves.
#pragma once

#include "genstr.h"

namespace genutil {

// The code set of texts that are to be read.
int TextCodeSet();

// What a reader left of a text, which may be part of rest itself.
void TakeRest(const char* at, CGNString& rest);
// All of it, from a reader that failed. Returns 0.
unsigned char KeepWhole(const CGNString& text, CGNString& rest);

// The first word of a text, for callers outside.
unsigned char ExtractWord(const CGNString& text, CGNString& word, CGNString& rest);

}  // namespace genutil
