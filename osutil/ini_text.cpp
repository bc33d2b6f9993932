#include "osutil/ini_text.h"

#include <cstring>

namespace genutil {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f';
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool SameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Lower(a[i]) != Lower(b[i])) return false;
    return true;
}

// Takes the first line off a text. Lines end in LF, with or without CR; old editors leave a Ctrl-Z
// at the end of a file, which ends the text.
bool NextLine(std::string_view* text, std::string_view* line) {
    if (text->empty() || text->front() == '\x1A') return false;
    const void* end = std::memchr(text->data(), '\n', text->size());
    const std::size_t length =
        end ? static_cast<std::size_t>(static_cast<const char*>(end) - text->data()) : text->size();
    *line = Trim(text->substr(0, length));
    text->remove_prefix(end ? length + 1 : length);
    return true;
}

bool IsHead(std::string_view line) {
    return !line.empty() && line.front() == '[';
}

std::string_view NameOfHead(std::string_view line) {
    line.remove_prefix(1);
    const std::size_t end = line.rfind(']');
    return Trim(end == std::string_view::npos ? line : line.substr(0, end));
}

std::string_view Unquoted(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

bool FindIniSection(std::string_view text, std::string_view name, std::string_view* lines) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (text.substr(0, kMark.size()) == kMark) text.remove_prefix(kMark.size());
    const std::string_view wanted = Trim(name);
    bool found = false;
    const char* begin = nullptr;
    std::string_view line;
    for (const char* at = text.data(); NextLine(&text, &line); at = text.data()) {
        if (!IsHead(line)) continue;
        if (found) {
            *lines = {begin, static_cast<std::size_t>(at - begin)};
            return true;
        }
        found = SameName(NameOfHead(line), wanted);
        begin = text.data();
    }
    if (found) *lines = {begin, static_cast<std::size_t>(text.data() - begin)};
    return found;
}

bool FindIniValue(std::string_view lines, std::string_view key, std::string_view* value) {
    const std::string_view wanted = Trim(key);
    std::string_view line;
    while (NextLine(&lines, &line)) {
        if (line.empty() || line.front() == ';') continue;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || !SameName(Trim(line.substr(0, equals)), wanted))
            continue;
        *value = Unquoted(Trim(line.substr(equals + 1)));
        return true;
    }
    return false;
}

}  // namespace genutil
