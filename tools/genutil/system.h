// What the program asks of the system beyond standard C++. Paths are as the command line gave them.
#pragma once

#include <cstdio>
#include <string>

enum class FileKind { kMissing, kFile, kFolder, kOther };  // other: devices, pipes
FileKind KindOf(const std::string& path);

// Creates a file that does not exist yet, for writing bytes. Null on failure, with errno set.
std::FILE* CreateNewFile(const std::string& path);

// Gives a file another name, in place of a file that has it. False on failure.
bool MoveOver(const std::string& from, const std::string& to);

// Makes the standard streams carry bytes as they are.
void UseBinaryStreams();

bool IsTerminal(std::FILE* stream);
bool ShowsStyles(std::FILE* stream);  // whether it is a terminal that knows escape sequences
std::size_t TerminalColumns(std::FILE* stream);  // 80 where it does not tell

// An argument of the command line as text in UTF-8.
std::string ArgumentToUtf8(const std::string& argument);

// Makes the code set of the command line's arguments that of the library's functions.
void UseCodeSetOfArguments();
// A text of the library's in that code set, as the program prints it.
std::string TextOfArgument(const std::string& text);
