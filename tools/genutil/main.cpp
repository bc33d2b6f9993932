// genutil: detects the encodings of text files, converts and examines them.
#include <cstdio>
#include <iterator>

#include "genversion.h"
#include "tools/genutil/command.h"
#include "tools/genutil/encoding.h"
#include "tools/genutil/manual.h"
#include "tools/genutil/system.h"

namespace {

const Command* const kCommands[] = {
    &kDetectCommand,  &kConvertCommand, &kTextCommand,  &kLocaleCommand, &kLocalesCommand,
    &kZonesCommand,   &kShowCommand,    &kReadCommand,  &kConfigCommand, &kVersionCommand,
    &kMessageCommand, &kSystemCommand,  &kTraceCommand, &kDdeCommand,    &kAutomationCommand};

void PrintHelp() {
    std::puts("genutil: text, dates and numbers in every locale\n");
    for (const Command* command : kCommands)
        std::printf("  genutil %-10s %s\n", command->name, command->summary);
    std::puts(
        "\ngenutil COMMAND --help describes a command; genutil --version prints the version.\n"
        "\"-\" as a file means standard input.\n"
        "\nExit status: 0 success, 1 something was lost or is invalid, 2 wrong usage\n"
        "or a file that cannot be read or written. On a terminal headings and errors are\n"
        "coloured unless the variable NO_COLOR is set.\n"
        "\nNames of encodings, which may also be written as in cp932, Shift-JIS or sjis:");
    std::printf("%s\n", ListEncodings().c_str());
}

const Command* FindCommand(const std::string& name) {
    for (const Command* command : kCommands)
        if (name == command->name) return command;
    return nullptr;
}

// Runs an option that is not a command. Returns kError after a message if the name is unknown.
Status RunGeneral(const std::string& name) {
    if (name == "--help" || name == "-h" || name == "help") PrintHelp();
    // These two are for the installation of the program.
    else if (name == "--manual")
        PrintManual(kCommands, std::size(kCommands));
    else if (name == "--completion")
        PrintCompletion(kCommands, std::size(kCommands));
    else if (name == "--version")
        std::puts("genutil " GENUTIL_VERSION_STRING);
    else
        return Complain("unknown command '" + name + "'; genutil --help lists the commands");
    return kOk;
}

bool AsksForHelp(const Arguments& arguments) {
    for (const std::string& argument : arguments) {
        if (argument == "--") return false;
        if (argument == "--help" || argument == "-h") return true;
    }
    return false;
}

Status Run(Arguments arguments) {
    if (arguments.empty()) {
        PrintHelp();
        return kError;
    }
    const std::string name = arguments.front();
    arguments.erase(arguments.begin());
    const Command* const command = FindCommand(name);
    if (!command) return RunGeneral(name);
    if (!AsksForHelp(arguments)) return command->run(arguments);
    std::fputs(command->help, stdout);
    return kOk;
}

}  // namespace

int main(int count, char** values) {
    UseBinaryStreams();
    const Status status = Run(Arguments(values + 1, values + count));
    // Data lost in an earlier write are no longer in the buffer.
    const bool isLost = std::ferror(stdout) != 0;
    if (std::fflush(stdout) == 0 && !isLost) return status;
    return status == kError ? kError : Complain("standard output cannot be written");
}
