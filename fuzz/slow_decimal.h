// Decimal text by its rules, applied one at a time to strings. The library must give the same
// results. For single-byte code sets.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace slow {

struct Decimal {
    std::string integer, fraction;
    bool negative = false, valid = false;
    std::size_t end = 0;
};

inline bool AllOf(const std::string& text, const std::string& allowed) {
    return text.find_first_not_of(allowed) == text.npos;
}

inline Decimal Parse(std::string text, char separator, char point) {
    const std::string digits = "0123456789";
    std::string starts = digits, runs = digits;
    starts += point;
    runs += point;
    runs += separator;
    Decimal result;
    if (text.empty()) {
        result.valid = true;
        return result;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    const std::size_t first = text.find_first_of(starts, text.find_first_not_of(' '));
    if (first == text.npos) return result;
    result.end = std::min(text.find_first_not_of(runs, first), text.size());
    const std::string before = text.substr(0, first), behind = text.substr(result.end);
    result.negative = (before == "-" && behind.empty()) || (before.empty() && behind == "-");
    const std::string run = text.substr(first, result.end - first);
    if ((!result.negative && !(before.empty() && behind.empty())) || run == std::string(1, point))
        return result;
    const std::size_t at = run.find(point);
    if (at != run.npos) result.fraction = run.substr(at + 1);
    if (!AllOf(result.fraction, digits)) return result;
    for (const char c : run.substr(0, at))
        if (c != separator) result.integer += c;
    result.valid = result.integer.size() < 256 && result.fraction.size() < 256;
    return result;
}

inline bool IsC(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(0, text.find_first_not_of(' '));
    if (text.substr(0, 1) == "-") text.erase(0, 1);
    return AllOf(text, "0123456789.");
}

// Returns the number of digits after each separator.
inline std::vector<std::size_t> GroupEnds(const std::string& grouping, std::size_t digits) {
    std::vector<std::size_t> ends;
    std::size_t end = 0, last = 0;
    for (const char c : grouping) {
        if (c == ';') continue;
        if (c < '0' || c > '9') break;
        if (c != '0') ends.push_back(end += last = static_cast<std::size_t>(c - '0'));
        if (c != '0') continue;
        while (last != 0 && end < digits) ends.push_back(end += last);
        break;
    }
    return ends;
}

inline std::string Write(const Decimal& number, char separator, char point,
                         const std::string& grouping) {
    const auto ends = GroupEnds(grouping, number.integer.size());
    std::string text = number.negative ? "-" : "";
    for (std::size_t i = 0; i < number.integer.size(); ++i) {
        text += number.integer[i];
        const std::size_t left = number.integer.size() - i - 1;
        if (left != 0 && std::count(ends.begin(), ends.end(), left) != 0) text += separator;
    }
    if (number.integer.empty()) text += '0';
    if (number.fraction.empty()) return text;
    text += point;
    return text += number.fraction;
}

inline std::optional<std::string> ToC(const std::string& text, char separator, char point,
                                      bool regional) {
    const std::string taken = text.substr(0, 63);
    const bool inC = !regional && IsC(taken);
    const Decimal number = inC ? Parse(taken, ',', '.') : Parse(taken, separator, point);
    if (!number.valid) return {};
    return Write(number, ',', '.', "");
}

inline std::optional<std::string> ToRegional(const std::string& text, char separator, char point,
                                             const std::string& grouping) {
    const std::string taken = text.substr(0, 63);
    const Decimal number = IsC(taken) ? Parse(taken, ',', '.') : Parse(taken, separator, point);
    if (!number.valid) return {};
    return Write(number, separator, point, grouping);
}

// Returns the number times ten to the power e.
inline std::string Shift(const std::string& text, int e, char separator, char point) {
    Decimal n = Parse(text, separator, point);
    const bool down = e < 0;
    for (int i = 0; i < (down ? -e : e); ++i) {
        if (down) {
            n.fraction.insert(0, 1, n.integer.empty() ? '0' : n.integer.back());
            if (!n.integer.empty()) n.integer.pop_back();
        } else {
            n.integer += n.fraction.empty() ? '0' : n.fraction.front();
            if (!n.fraction.empty()) n.fraction.erase(0, 1);
        }
    }
    if (!down) n.fraction = n.fraction.substr(0, static_cast<std::size_t>(e));
    if (n.integer.size() > 255 || n.fraction.size() > 255) return text;
    return Write(n, separator, point, "");
}

}  // namespace slow
