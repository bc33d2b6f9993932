// genutil system: the machine as reported by the library.
#include <cinttypes>
#include <cstdio>

#include "osutil.h"
#include "tools/genutil/command.h"
#include "tools/genutil/locale_name.h"

namespace {

void PrintText(const char* label, const CGNString& text) {
    std::printf("  %-14s %s\n", label, static_cast<const char*>(text));
}

void PrintMegabytes(const char* label, std::uint64_t bytes) {
    std::printf("  %-14s %" PRIu64 " MB\n", label, bytes / (1024 * 1024));
}

Status RunSystem(const Arguments& arguments) {
    Arguments rest;
    if (!ParseArguments(arguments, {}, &rest)) return kError;
    if (!rest.empty()) return Complain("system: '" + rest.front() + "' is not expected");
    UseUtf8();
    CGNString system, processor, folder;
    char host[64];
    OSInfo::GetOS(system);
    OSInfo::GetHardware(processor);
    OSGetHostnameNoDomain(host);
    OSGetTempDir(folder);
    OSMemoryStatus memory;
    OSGetMemoryStatus(memory);
    std::puts("system");
    PrintText("name", system);
    PrintText("processor", processor);
    PrintText("host", host);
    PrintText("temporary", folder);
    std::puts("memory");
    std::printf("  %-14s %" PRIu32 " %%\n", "in use", memory.memoryLoad);
    PrintMegabytes("with swap", memory.totalPageFile);
    PrintMegabytes("with swap free", memory.availablePageFile);
    return kOk;
}

}  // namespace

const Command kSystemCommand = {
    "system", "                          shows the machine",
    "genutil system\n"
    "\n"
    "Shows the name of the system, the processor and the host, the folder for temporary files\n"
    "and the memory in use.\n"
    "\n"
    "Exit status: 0.\n",
    RunSystem};
