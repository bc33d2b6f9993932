// genutil: says what text files are encoded in, converts them, and looks into them.
#include <cstdio>
#include <iterator>

#include "tools/genutil/command.h"
#include "tools/genutil/encoding.h"
#include "tools/genutil/manual.h"
#include "tools/genutil/system.h"

namespace {

const Command* const kCommands[] = {
    &kDetectCommand,  &kConvertCommand, &kTextCommand, &kLocaleCommand,    &kLocalesCommand,
    &kZonesCommand,   &kShowCommand,    &kReadCommand, &kConfigCommand,    &kVersionCommand,
    &kMessageCommand, &kSystemCommand,  &kDdeCommand,  &kAutomationCommand};

void PrintHelp() {
    std::puts("genutil: text in the encodings and customs of its readers\n");
    for (const Command* command : kCommands)
        std::printf("  genutil %-10s %s\n", command->name, command->summary);
    std::puts(
        "\ngenutil COMMAND --help tells more about one, genutil --version the version.\n"
        "\"-\" as a file stands for the standard input.\n"
        "\nExit status: 0 all is well, 1 something did not survive or is invalid, 2 wrong usage\n"
        "or a file that cannot be read or written.\n"
        "\nEncodings go by these names and by what contains them (cp932, Shift-JIS, sjis):");
    std::printf("%s\n", ListEncodings().c_str());
}

const Command* FindCommand(const std::string& name) {
    for (const Command* command : kCommands)
        if (name == command->name) return command;
    return nullptr;
}

}  // namespace

int main(int count, char** values) {
    UseBinaryStreams();
    Arguments arguments(values + 1, values + count);
    if (arguments.empty()) {
        PrintHelp();
        return kError;
    }
    const std::string name = arguments.front();
    arguments.erase(arguments.begin());
    if (name == "--help" || name == "-h" || name == "help") {
        PrintHelp();
        return kOk;
    }
    // For those who install the program.
    if (name == "--manual") {
        PrintManual(kCommands, std::size(kCommands));
        return kOk;
    }
    if (name == "--completion") {
        PrintCompletion(kCommands, std::size(kCommands));
        return kOk;
    }
    if (name == "--version") {
        std::puts("genutil " GENUTIL_VERSION);
        return kOk;
    }
    const Command* command = FindCommand(name);
    if (!command)
        return Complain("unknown command '" + name + "'; genutil --help lists the commands");
    for (const std::string& argument : arguments) {
        if (argument == "--") break;
        if (argument == "--help" || argument == "-h") {
            std::fputs(command->help, stdout);
            return kOk;
        }
    }
    const Status status = command->run(arguments);
    if (std::fflush(stdout) != 0) return Complain("the standard output cannot be written");
    return status;
}
