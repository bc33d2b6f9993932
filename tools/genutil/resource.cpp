// genutil version, genutil message: the version and the texts in the resources of a Windows program
// or DLL.
#include <cstdio>
#include <cstdlib>

#include "mbutil.h"
#include "osutil.h"
#include "tools/genutil/command.h"
#include "tools/genutil/input.h"
#include "tools/genutil/locale_name.h"
#include "tools/genutil/system.h"

namespace {

// The library takes paths in the current code set. A name without a directory would first be looked
// for next to this program.
std::string LibraryPath(const std::string& file) {
    const std::string path = ArgumentToUtf8(file);
    return path.find_first_of("/\\:") == std::string::npos ? "./" + path : path;
}

void PrintVersion(const std::string& file, COSBuildVersion& version) {
    std::printf("%s\n", DisplayName(file).c_str());
    std::printf("  version   %d.%d.%ld.%ld\n", version.GetVersionMajorNumber() & 0xFFFF,
                version.GetVersionMinorNumber() & 0xFFFF, version.GetVersionMaintenanceNumber(),
                version.GetVersionBuildNumber());
    std::printf("  text      \"%s\"\n", static_cast<const char*>(version.GetVersionString()));
    std::printf("  language  0x%04lx\n", version.GetLCID());
}

Status RunVersion(const Arguments& arguments) {
    std::vector<std::string> files;
    if (!ParseArguments(arguments, {}, &files)) return kError;
    if (files.empty()) return Complain("version: name a program or a DLL");
    UseUtf8();
    Status status = kOk;
    for (const std::string& file : files) {
        COSBuildVersion version(LibraryPath(file).c_str());
        if (version.Init()) {
            PrintVersion(file, version);
            continue;
        }
        const bool isFile = KindOf(file) == FileKind::kFile;
        Complain(DisplayName(file) +
                 (isFile ? " has no readable version" : " is not a readable file"));
        status = Worse(status, isFile ? kLoss : kError);
    }
    return status;
}

bool ParseNumber(const std::string& text, long* number) {
    char* end;
    *number = std::strtol(text.c_str(), &end, 10);
    return !text.empty() && text[0] >= '0' && text[0] <= '9' && *end == 0 && *number <= 0xFFFF;
}

Status RunMessage(const Arguments& arguments) {
    std::vector<std::string> words;
    if (!ParseArguments(arguments, {}, &words)) return kError;
    if (words.size() < 2)
        return Complain("message: name a resource library and a message's number");
    std::vector<long> numbers(words.size() - 1);
    for (std::size_t i = 1; i < words.size(); ++i)
        if (!ParseNumber(words[i], &numbers[i - 1]))
            return Complain("'" + words[i] + "' is not a message number from 0 to 65535");
    UseUtf8();
    const GNItem library = OSAttachLocaleResDLL(LibraryPath(words[0]).c_str());
    if (!library) return Complain(DisplayName(words[0]) + " is not a readable resource library");
    Status status = kOk;
    for (const long number : numbers) {
        CGNString text;
        if (OSLoadString(text, number)) {
            std::printf("%s\n", static_cast<const char*>(text));
            continue;
        }
        Complain(DisplayName(words[0]) + " has no message " + std::to_string(number));
        status = kLoss;
    }
    return status;
}

}  // namespace

const Command kVersionCommand = {
    "version", "FILE...                   shows the version of a Windows program or DLL",
    "genutil version FILE...\n"
    "\n"
    "Shows the version resource of each file: the four numbers of its version, the same as\n"
    "programs display it, and the language identifier of its first translation.\n"
    "\n"
    "Exit status: 0 all have one, 1 a file has none, 2 a file cannot be read.\n",
    RunVersion};

const Command kMessageCommand = {
    "message", "FILE.dll NUMBER...        shows texts of a resource library",
    "genutil message FILE.dll NUMBER...\n"
    "\n"
    "Shows the texts with these numbers (0 to 65535) in UTF-8, one per line. If the library has\n"
    "a text in several languages, the user's language is shown.\n"
    "\n"
    "Exit status: 0 all are there, 1 one is missing, 2 wrong usage or the library cannot be\n"
    "read.\n",
    RunMessage};
