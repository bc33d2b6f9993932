// genutil locales, genutil zones: the available locales and time zones.
#include <algorithm>
#include <cstdio>

#include "mbutil.h"
#include "tools/genutil/command.h"
#include "tools/genutil/locale_name.h"
#include "tools/genutil/terminal.h"

namespace {

using Row = std::vector<std::string>;

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool Contains(const std::string& text, const std::string& part) {
    const auto same = [](char a, char b) { return Lower(a) == Lower(b); };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
}

// Returns the rows that contain the filter in one of their columns, in any letter case.
std::vector<Row> Filter(const std::vector<Row>& rows, const std::string& filter) {
    std::vector<Row> found;
    for (const Row& row : rows)
        for (const std::string& column : row)
            if (Contains(column, filter)) {
                found.push_back(row);
                break;
            }
    return found;
}

void Print(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], Columns(row[i]));
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            if (i + 1 < row.size()) line.append(widths[i] + 2 - Columns(row[i]), ' ');
        }
        const bool isHeader = &row == &rows.front();
        if (isHeader) line = Styled(stdout, Style::kHeading, line);
        std::printf("%s\n", line.c_str());
    }
}

std::vector<Row> Locales() {
    std::vector<Row> rows;
    char name[16], charset[32], identifier[16], description[128];
    int row = -1, number = -1;
    while (mbGetNextLocaleEx(name, sizeof name, &row, &number, mbSelectAll)) {
        std::snprintf(identifier, sizeof identifier, "0x%04lx", mbGetLCID(name));
        mbDefaultCodePageForLocale(charset, sizeof charset, name);
        mbDisplayLocale(description, sizeof description, name, mbStyleEnglish);
        rows.push_back({name, identifier, charset, description});
    }
    return rows;
}

std::vector<Row> Zones() {
    std::vector<Row> rows;
    char name[48], windows[64], display[128];
    mbTZoneCursor cursor = mbFirstTZone;
    while (mbGetNextTZone(name, sizeof name, &cursor)) {
        mbGetWindowsTZone(windows, sizeof windows, name);
        mbDisplayTZone(display, sizeof display, name);
        rows.push_back({name, display, windows});
    }
    return rows;
}

// Prints the matching rows below their header.
Status List(const char* command, const Arguments& arguments, std::vector<Row> (*rows)(),
            const Row& header) {
    std::vector<std::string> filters;
    if (!ParseArguments(arguments, {}, &filters)) return kError;
    if (filters.size() > 1)
        return Complain(std::string(command) + ": give one filter, in quotes if it has blanks");
    UseUtf8();
    const std::string filter = filters.empty() ? "" : filters.front();
    std::vector<Row> found = Filter(rows(), filter);
    if (found.empty()) {
        Complain(std::string(command) + ": no entry contains '" + filter +
                 "'; without a filter all are listed");
        return kLoss;
    }
    found.insert(found.begin(), header);
    Print(found);
    return kOk;
}

Status RunLocales(const Arguments& arguments) {
    return List("locales", arguments, Locales, {"NAME", "WINDOWS", "CODE SET", "DESCRIPTION"});
}

Status RunZones(const Arguments& arguments) {
    return List("zones", arguments, Zones, {"NAME", "STANDARD TIME AND PLACE", "WINDOWS"});
}

}  // namespace

const Command kLocalesCommand = {
    "locales", "[FILTER]                  lists the locales",
    "genutil locales [FILTER]\n"
    "\n"
    "Lists the locales that the library knows by name: the name, the Windows identifier, the\n"
    "code set of the locale's texts, and a description. FILTER selects those that\n"
    "contain it, in any letter case: a name, a language, a country, a code set.\n"
    "\n"
    "Exit status: 0 some are listed, 1 none contains FILTER, 2 wrong usage.\n",
    RunLocales};

const Command kZonesCommand = {
    "zones", "[FILTER]                  lists the time zones",
    "genutil zones [FILTER]\n"
    "\n"
    "Lists the time zones of the system, from west to east: the name, the offset in\n"
    "standard time with the place, and the name of the zone on Windows. FILTER selects\n"
    "those that contain it, in any letter case: a city, a country, \"+09:00\".\n"
    "\n"
    "Exit status: 0 some are listed, 1 none contains FILTER, 2 wrong usage.\n",
    RunZones};
