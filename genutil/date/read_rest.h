// The text that a reader of dates and times receives, and the rest that it returns.
#pragma once

#include "genstr.h"

namespace genutil {

// Returns the code set of texts to be read.
int TextCodeSet();

// Stores the unread part of a text, which may be part of rest itself.
void TakeRest(const char* at, CGNString& rest);
// Stores the whole text as the rest after a reader failed. Returns 0.
unsigned char KeepWhole(const CGNString& text, CGNString& rest);

// Extracts the first word of a text, for external callers.
unsigned char ExtractWord(const CGNString& text, CGNString& word, CGNString& rest);

}  // namespace genutil
