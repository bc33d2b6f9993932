// Locales by the names that users write, and conversion of texts between their encodings and UTF-8.
#pragma once

#include <string>

#include "genlocale.h"
#include "genstr.h"

// Returns the library's name for a locale name that a user wrote, or an empty text if there is
// none.
std::string TableName(const std::string& name);

std::string ToUtf8(const CGNString& text, int codeSet);

// Returns false if the code set lacks a character of the text. *lostAt then receives the byte
// position of the first one.
bool FromUtf8(const std::string& utf8, int codeSet, CGNString* text, std::size_t* lostAt);

// Counts the characters of a text in UTF-8.
std::size_t CountCharacters(const std::string& utf8);

// Makes the code set of a locale's texts the current one.
void UseCodeSetOf(const CLCLocale& locale);

// Makes UTF-8 the current code set, so that texts can be printed without conversion.
void UseUtf8();
