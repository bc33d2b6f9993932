// Reading the text of an ini file: lines "[section]", each followed by lines "key = value".
//
// Names are in the current code set. Their letter case and the blanks around them are ignored. A
// line that begins with ";" is a comment. A value is trimmed of the blanks around it and then of
// one pair of quotation marks or apostrophes that encloses all of it. Lines end in LF, with or
// without CR. A Ctrl-Z as the first byte of a line, written by old editors, ends the text. A UTF-8
// byte-order mark is not part of the text. The views returned refer to the text.
#pragma once

#include <cstddef>
#include <string_view>

namespace genutil {

// Finds the lines of the first section with that name, without its head. Returns false if there is
// none.
bool FindIniSection(std::string_view text, std::string_view name, std::string_view* lines);

// Finds the first line with a key among the lines of a section, without its LF. Returns false if
// there is none.
bool FindIniLine(std::string_view lines, std::string_view key, std::string_view* found);

// Finds the value of the first such key among the lines of a section. Returns false if there is
// none.
bool FindIniValue(std::string_view lines, std::string_view key, std::string_view* value);

// A search for one value in a text that is supplied in pieces of whole lines.
class IniSearch {
  public:
    IniSearch(std::string_view section, std::string_view key);

    // Searches the next piece. Returns true if the search is complete: Value() is then found, or
    // known to be missing.
    // @param isFirst true if the text begins with this piece.
    bool Next(std::string_view lines, bool isFirst);

    bool IsFound() const { return m_found; }
    std::string_view Value() const { return m_value; }  // refers to the last piece

  private:
    std::string_view m_section, m_key, m_value;
    bool m_inSection = false;
    bool m_found = false;
};

// -- Shared by the other readers and the writer of such texts
// ----------------------------------------

// Returns the number of bytes in whole characters. A text may end within a character.
std::size_t WholeCharacters(std::string_view text);

std::string_view TrimIni(std::string_view text);
bool SameIniName(std::string_view a, std::string_view b);  // both must be trimmed
// Returns a hash that is equal for equal names.
unsigned HashIniName(std::string_view name);

std::string_view SkipIniMark(std::string_view text);

// Returns the next line of [at, end) that is the head of a section or ends the text, as the
// position of its first byte that is not blank: "[" or Ctrl-Z. Returns `end` if there is none. `at`
// must be the beginning of a line.
const char* NextIniHead(const char* at, const char* end);
// Returns the end of the line at `at`, after its LF.
const char* EndOfIniLine(const char* at, const char* end);
// Returns the name in a line that begins with "[", with or without its LF.
std::string_view NameOfIniHead(std::string_view line);

// A walk over the sections of a text, or of a piece of whole lines of it.
class IniSections {
  public:
    explicit IniSections(std::string_view text)
        : m_at(text.data()), m_end(text.data() + text.size()) {}

    // Advances to the next section. Returns false after the last.
    bool Next();
    // After the last section: returns true if the text ends there at a Ctrl-Z, even if the piece
    // continues.
    bool IsEnded() const { return m_ended; }

    const char* Head() const {
        return m_head;
    }  // the "["; after the last section, the end of the
       // text
    std::string_view Name() const;
    std::string_view Lines();  // from the head to the next head or the end

  private:
    const char *m_at, *m_end, *m_head = nullptr;
    bool m_ended = false;
};

// Splits a line, with or without its LF, into key and value. They are unchanged except for the
// blanks around them. Returns false for a comment and a line without "=".
bool SplitIniLine(std::string_view line, std::string_view* key, std::string_view* value);
std::string_view UnquotedIni(std::string_view value);

// Returns the position of the "=" of a line: the first that is not the second byte of a character.
// Returns npos if there is none.
std::size_t FindIniEquals(std::string_view line);
// Returns true if an "=" that follows a key would be read as the second byte of its last character.
bool TakesIniEquals(std::string_view key);

}  // namespace genutil
