// Locales by the names that users write, and texts between their encodings and UTF-8.
#pragma once

#include <string>

#include "genlocale.h"
#include "genstr.h"

// The name that the library's table has for a name that a user may write; empty for none.
std::string TableName(const std::string& name);

std::string ToUtf8(const CGNString& text, int codeSet);

// False when the code set lacks a character of the text; *lostAt is then the first one's byte.
bool FromUtf8(const std::string& utf8, int codeSet, CGNString* text, std::size_t* lostAt);

// Characters of a text in UTF-8.
std::size_t CountCharacters(const std::string& utf8);

// Makes the code set of a locale's texts current.
void UseCodeSetOf(const CLCLocale& locale);

// Makes UTF-8 current, so that texts can be printed as they are.
void UseUtf8();
