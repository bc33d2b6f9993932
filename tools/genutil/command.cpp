#include "tools/genutil/command.h"

#include <cctype>
#include <cstdio>

#include "tools/genutil/system.h"
#include "tools/genutil/terminal.h"

namespace {

std::string g_place;  // in a sequence of files: "[2/9] "
std::size_t g_progressColumns = 0;

}  // namespace

void PlaceInRow(std::size_t number, std::size_t count) {
    if (count < 2) return;
    char place[48];
    std::snprintf(place, sizeof place, "[%zu/%zu] ", number, count);
    g_place = place;
}

void ShowProgress(const std::string& name, const std::string& what) {
    if (!IsTerminal(stderr)) return;
    ClearProgress();
    // On a single line, because wrapped text could not be cleared.
    const std::string line =
        FittingInto(g_place + what + ArgumentToUtf8(name), TerminalColumns(stderr) - 1);
    std::fprintf(stderr, "%s\r", line.c_str());
    std::fflush(stderr);
    g_progressColumns = Columns(line);
}

void ClearProgress() {
    if (g_progressColumns == 0) return;
    std::fprintf(stderr, "\r%*s\r", static_cast<int>(g_progressColumns), "");
    g_progressColumns = 0;
}

Status Complain(const std::string& message) {
    ClearProgress();
    std::fprintf(stderr, "%s %s\n", Styled(stderr, Style::kFault, "genutil:").c_str(),
                 message.c_str());
    return kError;
}

namespace {

const Option* FindOption(const std::vector<Option>& options, const std::string& name) {
    for (const Option& option : options)
        if (name == option.name || (option.shortName && name == option.shortName)) return &option;
    return nullptr;
}

}  // namespace

bool ParseArguments(const Arguments& arguments, const std::vector<Option>& options,
                    std::vector<std::string>* files) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--") {
            files->insert(files->end(), arguments.begin() + static_cast<long>(i) + 1,
                          arguments.end());
            return true;
        }
        const bool isNumber =
            argument.size() > 1 && std::isdigit(static_cast<unsigned char>(argument[1]));
        if (argument.size() < 2 || argument[0] != '-' || isNumber) {  // "-" is standard input
            files->push_back(argument);
            continue;
        }
        const std::size_t equals = argument.find('=');
        const bool joined = argument[1] == '-' && equals != std::string::npos;
        const std::string name = joined ? argument.substr(0, equals) : argument;
        const Option* option = FindOption(options, name);
        if (!option) {
            Complain("unknown option '" + name + "'; --help lists the options");
            return false;
        }
        if (option->flag) {
            if (joined) {
                Complain("option '" + name + "' takes no value");
                return false;
            }
            *option->flag = true;
        } else if (joined || i + 1 < arguments.size()) {
            const std::string value = joined ? argument.substr(equals + 1) : arguments[++i];
            if (option->values)
                option->values->push_back(value);
            else
                *option->value = value;
        } else {
            Complain("option '" + name + "' needs a value");
            return false;
        }
    }
    return true;
}
