// The system functions that the program needs beyond standard C++. Paths are passed as on the
// command line.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

// Converts a path of the command line, which on Windows is in the ANSI code page, and back, with
// "/" between names.
std::filesystem::path PathOf(const std::string& argument);
std::string ArgumentOf(const std::filesystem::path& path);

enum class FileKind { kMissing, kFile, kFolder, kOther };  // kOther: devices, pipes
FileKind KindOf(const std::string& path);

// Identifies a file: equal for all its names. Empty if the system does not tell.
std::string IdentityOf(const std::string& path);

// Creates a new file for writing bytes. Returns null on failure, also if it exists, with errno set.
// A private file can only be read by its owner, if the system has such rights.
std::FILE* CreateNewFile(const std::string& path, bool isPrivate);

// Renames a file and replaces an existing one. Returns false on failure.
bool MoveOver(const std::string& from, const std::string& to);

// Sets the length of a file. Returns false on failure, with errno set.
bool CutFile(const std::string& path, std::size_t length);

// Switches the standard streams to unchanged bytes.
void UseBinaryStreams();

bool IsTerminal(std::FILE* stream);
bool ShowsStyles(std::FILE* stream);  // returns true for a terminal that supports escape sequences
std::size_t TerminalColumns(std::FILE* stream);  // returns 80 if the width is unknown

// Converts an argument of the command line to UTF-8.
std::string ArgumentToUtf8(const std::string& argument);

// Makes the code set of command-line arguments the current one of the library.
void UseCodeSetOfArguments();
// Converts a text of the library in that code set to the form that the program prints.
std::string TextOfArgument(const std::string& text);
