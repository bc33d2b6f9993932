// Reads the text of an ini file: lines "[section]" and, below them, "key = value".
//
// Names are in the current code set and found in any letter case, with blanks around them. A line
// that begins with ";" is a comment. A value loses the blanks around it and then one pair of
// quotation marks or apostrophes that encloses all of it. Lines end in LF, with or without CR; old
// editors leave a Ctrl-Z as the first byte of a line, which ends the text. A byte-order mark of
// UTF-8 is no part of the text. The views returned point into the text.
#pragma once

#include <cstddef>
#include <string_view>

namespace genutil {

// The lines of the first section of that name, without its head; false when there is none.
bool FindIniSection(std::string_view text, std::string_view name, std::string_view* lines);

// The first line with such a key among the lines of a section, without its LF; false when there is
// none.
bool FindIniLine(std::string_view lines, std::string_view key, std::string_view* found);

// The value of the first such key among the lines of a section; false when there is none.
bool FindIniValue(std::string_view lines, std::string_view key, std::string_view* value);

// A search for one value in a text that comes in pieces of whole lines.
class IniSearch {
  public:
    IniSearch(std::string_view section, std::string_view key);

    // Looks through the next piece; `isFirst` if the text begins with it. True when no more is
    // needed: Value() is then found, or known to be missing.
    bool Next(std::string_view lines, bool isFirst);

    bool IsFound() const { return m_found; }
    std::string_view Value() const { return m_value; }  // in the last piece

  private:
    std::string_view m_section, m_key, m_value;
    bool m_inSection = false;
    bool m_found = false;
};

// -- What the other readers and the writer of such texts share ------------------------------------

// How much of a text is whole characters: it may end within one.
std::size_t WholeCharacters(std::string_view text);

std::string_view TrimIni(std::string_view text);
bool SameIniName(std::string_view a, std::string_view b);  // both trimmed
// The same for names that are the same.
unsigned HashIniName(std::string_view name);

std::string_view SkipIniMark(std::string_view text);

// The next line of [at, end) that is a section's head, or ends the text: its first byte that is not
// blank, "[" or Ctrl-Z; `end` when there is none. A line begins at `at`.
const char* NextIniHead(const char* at, const char* end);
// The end of the line at `at`, behind its LF.
const char* EndOfIniLine(const char* at, const char* end);
// The name in a line that begins with "[", with or without its LF.
std::string_view NameOfIniHead(std::string_view line);

// The sections of a text, or of a piece of whole lines of it, one after another.
class IniSections {
  public:
    explicit IniSections(std::string_view text)
        : m_at(text.data()), m_end(text.data() + text.size()) {}

    // Goes to the next section. Returns false after the last.
    bool Next();
    // After the last: whether the text ends there, at a Ctrl-Z, though the piece may go on.
    bool IsEnded() const { return m_ended; }

    const char* Head() const { return m_head; }  // the "["; after the last, where the text ends
    std::string_view Name() const;
    std::string_view Lines();  // below the head, up to the next head or the end

  private:
    const char *m_at, *m_end, *m_head = nullptr;
    bool m_ended = false;
};

// Takes a line with its LF or without. A line's key and value as they stand, without the blanks
// around them; false for a comment and a line without "=".
bool SplitIniLine(std::string_view line, std::string_view* key, std::string_view* value);
std::string_view UnquotedIni(std::string_view value);

// Where the "=" of a line is, npos without one: the first that is no second byte of a character.
std::size_t FindIniEquals(std::string_view line);
// Whether the "=" that follows a key would be taken for the second byte of its last character.
bool TakesIniEquals(std::string_view key);

}  // namespace genutil
