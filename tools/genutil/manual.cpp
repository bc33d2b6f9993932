#include "tools/genutil/manual.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <set>

#include "genversion.h"

namespace {

// Prints text literally: escapes characters with a special meaning at the start of a line or
// anywhere.
void PrintText(const char* text) {
    bool lineBegins = true;
    for (const char* p = text; *p; ++p) {
        if (lineBegins && (*p == '.' || *p == '\'')) std::fputs("\\&", stdout);
        if (*p == '\\' || *p == '-')
            std::printf("\\%c", *p == '\\' ? 'e' : '-');
        else
            std::putchar(*p);
        lineBegins = *p == '\n';
    }
}

// The first line of a help text is its synopsis.
const char* BehindSynopsis(const char* help) {
    const char* end = std::strstr(help, "\n\n");
    return end ? end + 2 : help;
}

// Returns the words of a help text that begin with two hyphens.
std::set<std::string> OptionsIn(const char* help) {
    std::set<std::string> options = {"--help"};
    for (const char* p = help; (p = std::strstr(p, "--"));) {
        const char* end = p + 2;
        while (std::islower(static_cast<unsigned char>(*end)) || *end == '-') ++end;
        if (end - p > 3) options.emplace(p, end);
        p = end;
    }
    return options;
}

}  // namespace

void PrintManual(const Command* const* commands, std::size_t count) {
    std::puts(".TH GENUTIL 1 \"\" \"genutil " GENUTIL_VERSION_STRING
              "\" \"User Commands\"\n"
              ".SH NAME\n"
              "genutil \\- text, dates and numbers in every locale\n"
              ".SH SYNOPSIS\n"
              ".B genutil\n"
              ".I COMMAND ARGUMENT...\n"
              ".br\n"
              ".B genutil\n"
              "[\\fICOMMAND\\fR] \\fB\\-\\-help\\fR | \\fB\\-\\-version\\fR");
    for (std::size_t i = 0; i < count; ++i) {
        const char* const help = commands[i]->help;
        const char* const body = BehindSynopsis(help);
        std::printf(".SH %s\n.nf\n\\fB", commands[i]->name);
        PrintText(std::string(help, body).c_str());
        std::fputs("\\fR", stdout);
        PrintText(body);
        std::puts(".fi");
    }
    std::puts(
        ".SH EXIT STATUS\n"
        "0 on success, 1 if something was lost or is invalid, 2 after wrong usage or if a\n"
        "file or standard output cannot be read or written.\n"
        ".SH ENVIRONMENT\n"
        ".B NO_COLOR\n"
        "disables colours if it is set to a text that is not empty.");
}

void PrintCompletion(const Command* const* commands, std::size_t count) {
    std::puts(
        "_genutil() {\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} words=\n"
        "    if [ \"$COMP_CWORD\" = 1 ]; then");
    std::fputs("        words='--help --version", stdout);
    for (std::size_t i = 0; i < count; ++i) std::printf(" %s", commands[i]->name);
    std::puts("'\n    else\n        case ${COMP_WORDS[1]} in");
    for (std::size_t i = 0; i < count; ++i) {
        std::printf("        %s) words='", commands[i]->name);
        const char* separator = "";
        for (const std::string& option : OptionsIn(commands[i]->help)) {
            std::printf("%s%s", separator, option.c_str());
            separator = " ";
        }
        std::puts("' ;;");
    }
    std::puts(
        "        esac\n"
        "        [[ $word == -* ]] || words=\n"
        "    fi\n"
        "    COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
        "}\n"
        "complete -o default -F _genutil genutil");
}
