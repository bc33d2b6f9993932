#include "osutil/config/ini_edit.h"

#include "osutil/config/ini_text.h"

namespace genutil {

namespace {

std::size_t Distance(const char* from, const char* to) {
    return static_cast<std::size_t>(to - from);
}

std::string_view LineEndOf(std::string_view text) {
    const std::size_t feed = text.find('\n');
    return feed != std::string_view::npos && feed > 0 && text[feed - 1] == '\r' ? "\r\n" : "\n";
}

// Returns the end of the text for its readers: the end, or a line that begins with Ctrl-Z.
const char* EndOfText(std::string_view text) {
    IniSections sections(SkipIniMark(text));
    while (sections.Next()) continue;
    return sections.Head();
}

// Returns the position after the last line that is not blank.
const char* EndOfEntries(std::string_view lines) {
    const char* const end = lines.data() + lines.size();
    const char* last = lines.data();
    for (const char *at = last, *next; at != end; at = next) {
        next = EndOfIniLine(at, end);
        std::string_view line{at, Distance(at, next)};
        if (line.back() == '\n') line.remove_suffix(1);
        if (!TrimIni(line).empty()) last = next;
    }
    return last;
}

// Replaces the text after "=" and the blanks that follow it.
bool PlanReplacement(std::string_view text, std::string_view line, std::string_view value,
                     IniEdit* edit) {
    while (line.back() == '\r') line.remove_suffix(1);
    const char* const end = line.data() + line.size();
    const char* at = line.data() + FindIniEquals(line) + 1;
    while (at < end && (*at == ' ' || *at == '\t')) ++at;
    if (std::string_view(at, Distance(at, end)) == value) return false;
    *edit = {Distance(text.data(), at), Distance(text.data(), end), {value}, 1};
    return true;
}

// Inserts new lines at a position. The preceding line may lack its line end.
void PlanInsertion(std::string_view text, const char* at, IniEdit* edit) {
    const std::size_t place = Distance(text.data(), at);
    *edit = {place, place, {}, 0};
    if (place > 0 && at != SkipIniMark(text).data() && at[-1] != '\n') edit->Add(LineEndOf(text));
}

bool HasLineEnd(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

}  // namespace

bool IniHolds(std::string_view section, std::string_view key, std::string_view value) {
    if (HasLineEnd(section) || HasLineEnd(key) || HasLineEnd(value)) return false;
    section = TrimIni(section);
    if (WholeCharacters(section) != section.size())
        return false;  // the "]" would be taken for its
                       // second byte
    key = TrimIni(key);
    return !key.empty() && key.front() != ';' && key.front() != '[' && key.front() != '\x1A' &&
           FindIniEquals(key) == std::string_view::npos && !TakesIniEquals(key);
}

bool PlanIniValue(std::string_view text, std::string_view section, std::string_view key,
                  std::string_view value, IniEdit* edit) {
    const std::string_view end = LineEndOf(text);
    section = TrimIni(section);
    key = TrimIni(key);
    value = TrimIni(value);  // readers ignore surrounding blanks
    std::string_view lines;
    const bool hasSection = FindIniSection(text, section, &lines);
    if (hasSection) {
        std::string_view line;
        if (FindIniLine(lines, key, &line)) return PlanReplacement(text, line, value, edit);
        PlanInsertion(text, EndOfEntries(lines), edit);
    } else {
        PlanInsertion(text, EndOfText(text), edit);
        for (const std::string_view part : {std::string_view("["), section, std::string_view("]")})
            edit->Add(part);
        edit->Add(end);
    }
    for (const std::string_view part : {key, std::string_view("="), value, end}) edit->Add(part);
    return true;
}

bool PlanIniKeyRemoval(std::string_view text, std::string_view section, std::string_view key,
                       IniEdit* edit) {
    std::string_view lines, line;
    if (!FindIniSection(text, section, &lines) || !FindIniLine(lines, key, &line)) return false;
    const char* end = EndOfIniLine(line.data(), lines.data() + lines.size());
    *edit = {Distance(text.data(), line.data()), Distance(text.data(), end), {}, 0};
    return true;
}

bool PlanIniSectionRemoval(std::string_view text, std::string_view section, IniEdit* edit) {
    std::string_view lines;
    if (!FindIniSection(text, section, &lines)) return false;
    const char* const first = SkipIniMark(text).data();
    const char* head = lines.data();
    if (head > first && head[-1] == '\n') --head;  // to the end of the head's own line
    while (head > first && head[-1] != '\n') --head;
    *edit = {
        Distance(text.data(), head), Distance(text.data(), lines.data() + lines.size()), {}, 0};
    return true;
}

}  // namespace genutil
