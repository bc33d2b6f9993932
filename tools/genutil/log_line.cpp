#include "tools/genutil/log_line.h"

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Returns true if the text at a position has the form of `picture`, in which 9 is any digit and T
// is "T" or a blank.
bool Matches(const std::string& text, std::size_t at, const char* picture) {
    for (; *picture; ++picture, ++at) {
        if (at >= text.size()) return false;
        const char c = text[at];
        const bool fits = *picture == '9'   ? IsDigit(c)
                          : *picture == 'T' ? c == 'T' || c == ' '
                                            : c == *picture;
        if (!fits) return false;
    }
    return true;
}

std::string Digits(const std::string& text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && IsDigit(text[end])) ++end;
    return text.substr(at, end - at);
}

// Returns the time of an ISO date, without its zone.
std::string IsoTime(const std::string& text, std::size_t at) {
    if (!Matches(text, at, "9999-99-99T99:99:99")) return "";
    std::string time = text.substr(at, 19);
    time[10] = ' ';
    return time + (Matches(text, at + 19, ".999") ? text.substr(at + 19, 4) : ".000");
}

// "11/21/26 09:30:12 :: TID 4711 :: reader : 12 rows". Date and thread may be missing.
LogLine ParseDefault(const std::string& line) {
    LogLine parsed;
    std::size_t at = 0;
    if (Matches(line, 0, "99/99/99 99:99:99 :: ")) {
        const std::string century = line[6] >= '7' ? "19" : "20";
        parsed.time = century + line.substr(6, 2) + "-" + line.substr(0, 2) + "-" +
                      line.substr(3, 2) + " " + line.substr(9, 8) + ".000";
        at = 21;
        parsed.begins = true;
    }
    if (line.compare(at, 4, "TID ") == 0) {
        parsed.thread = Digits(line, at + 4);
        const std::size_t end = at + 4 + parsed.thread.size();
        if (!parsed.thread.empty() && line.compare(end, 4, " :: ") == 0) {
            at = end + 4;
            parsed.begins = true;
        }
    }
    const std::size_t separator = parsed.begins ? line.find(" : ", at) : std::string::npos;
    if (separator != std::string::npos) parsed.module = line.substr(at, separator - at);
    return parsed;
}

// Returns the place after "NAME": in a JSON object, or npos.
std::size_t ValueOf(const std::string& line, const char* name) {
    const std::string key = std::string("\"") + name + "\":";
    const std::size_t at = line.find(key);
    return at == std::string::npos ? at : at + key.size();
}

LogLine ParseJson(const std::string& line) {
    LogLine parsed;
    parsed.begins = true;
    if (const std::size_t at = ValueOf(line, "time"); at != std::string::npos)
        parsed.time = IsoTime(line, at + 1);
    if (const std::size_t at = ValueOf(line, "thread"); at != std::string::npos)
        parsed.thread = Digits(line, at);
    std::size_t at = ValueOf(line, "module");
    if (at == std::string::npos) return parsed;
    for (++at; at < line.size() && line[at] != '"'; ++at) {
        if (line[at] == '\\' && at + 1 < line.size()) ++at;
        parsed.module += line[at];
    }
    return parsed;
}

}  // namespace

LogLine ParseLogLine(const std::string& line) {
    if (line.compare(0, 8, "{\"time\":") == 0) return ParseJson(line);
    LogLine parsed;
    parsed.time = IsoTime(line, 0);
    parsed.begins = !parsed.time.empty();
    return parsed.begins ? parsed : ParseDefault(line);
}
