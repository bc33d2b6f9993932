// Ini files: search and index give the same results, and after an edit the value is read back and
// every other line is unchanged. The input is a section, a key and a value, each on a line,
// followed by the text.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "osutil/config/ini_edit.h"
#include "osutil/config/ini_index.h"
#include "osutil/config/ini_text.h"
#include "tests/support/code_set_guard.h"

using namespace genutil;

namespace {

struct Answer {
    bool found = false;
    std::string value;
    bool operator==(const Answer&) const = default;
};

Answer Find(std::string_view text, std::string_view section, std::string_view key) {
    std::string_view lines, value;
    if (!FindIniSection(text, section, &lines) || !FindIniValue(lines, key, &value)) return {};
    return {true, std::string(value)};
}

Answer FindByIndex(std::string_view text, std::string_view section, std::string_view key) {
    IniIndex index;
    std::string_view value;
    if (!index.Build(text)) {  // too many lines of one name
        index.Clear();
        return Find(text, section, key);
    }
    const bool found = index.Find(text, section, key, &value);
    index.Clear();
    return found ? Answer{true, std::string(value)} : Answer{};
}

Answer FindInPieces(std::string_view text, std::string_view section, std::string_view key) {
    IniSearch search(section, key);
    for (bool first = true; !text.empty(); first = false) {
        const std::size_t feed = text.find('\n');
        const std::size_t length = feed == std::string_view::npos ? text.size() : feed + 1;
        if (search.Next(text.substr(0, length), first)) break;
        text.remove_prefix(length);
    }
    return search.IsFound() ? Answer{true, std::string(search.Value())} : Answer{};
}

std::string Apply(std::string_view text, const IniEdit& edit) {
    Check(edit.begin <= edit.end && edit.end <= text.size(), "place of an edit");
    std::string result(text.substr(0, edit.begin));
    for (unsigned i = 0; i < edit.count; ++i) result += edit.parts[i];
    return result += text.substr(edit.end);
}

std::vector<std::string_view> Lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t feed = text.find('\n');
        lines.push_back(text.substr(0, feed));
        text.remove_prefix(feed == std::string_view::npos ? text.size() : feed + 1);
    }
    return lines;
}

// All lines of the old text except `changed` are in the new one, at its ends.
void CheckOtherLines(std::string_view before, std::string_view after, std::size_t changed) {
    const auto old = Lines(before), now = Lines(after);
    std::size_t head = 0, tail = 0;
    const auto without = [](std::string_view line) {
        return line.substr(0, line.find_last_not_of('\r') + 1);
    };
    while (head < old.size() && head < now.size() && without(old[head]) == without(now[head]))
        ++head;
    while (tail < old.size() - head && tail < now.size() - head &&
           old[old.size() - 1 - tail] == now[now.size() - 1 - tail])
        ++tail;
    Check(head + tail + changed >= old.size(), "another line was changed");
}

std::string NextLine(std::string_view* input) {
    const std::size_t feed = input->find('\n');
    const std::string line(input->substr(0, feed));
    input->remove_prefix(feed == std::string_view::npos ? input->size() : feed + 1);
    return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // In turn: bytes, pairs, pairs with "=" among their second bytes, and longer characters.
    static constexpr int kCodeSets[] = {mbWestern, mbShiftJis, mbJohab, mbUtf8};
    const CodeSetGuard codeSet(kCodeSets[size % 4]);
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string section = NextLine(&input), key = NextLine(&input), value = NextLine(&input);
    const std::string text(input);
    const Answer before = Find(text, section, key);
    Check(before == FindByIndex(text, section, key), "index");
    Check(before == FindInPieces(text, section, key), "search in pieces");

    IniEdit edit;
    if (PlanIniKeyRemoval(text, section, key, &edit)) {
        Check(before.found, "removal of nothing");
        CheckOtherLines(text, Apply(text, edit), 1);
    }
    if (PlanIniSectionRemoval(text, section, &edit)) Apply(text, edit);
    if (!IniHolds(section, key, value)) return 0;
    const std::string after =
        PlanIniValue(text, section, key, value, &edit) ? Apply(text, edit) : text;
    CheckOtherLines(SkipIniMark(text), SkipIniMark(after), before.found ? 1 : 0);
    const Answer read = Find(after, section, key);
    Check(read.found && read.value == UnquotedIni(TrimIni(value)), "the value does not read back");
    Check(!PlanIniValue(after, section, key, value, &edit), "written twice");
    return 0;
}
