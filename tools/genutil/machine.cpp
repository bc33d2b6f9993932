// genutil system: the machine as reported by the library.
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "osutil.h"
#include "tools/genutil/command.h"
#include "tools/genutil/locale_name.h"

namespace {

// A fact with its name in JSON, its label on the terminal, and its value: a text, or a number with
// its unit.
struct Fact {
    const char* name;
    const char* label;
    std::string text;
    std::uint64_t number = 0;
    const char* unit = nullptr;  // "MB" shows a number of bytes
};

std::string Text(const CGNString& text) {
    return static_cast<const char*>(text);
}

std::string UsersLocale() {
    char name[32] = "";
    mbGetLocalePart(nullptr, mbPartName, name, sizeof name);
    return name;
}

std::string UsersZone() {
    char name[128] = "";
    mbGetTZone(name, sizeof name);
    return name;
}

std::vector<Fact> CollectFacts() {
    CGNString system, processor, folder, program;
    char host[64];
    OSInfo::GetSystem(system);
    OSInfo::GetHardware(processor);
    OSInfo::GetProgramPath(program);
    OSGetHostnameNoDomain(host);
    OSGetTempDir(folder);
    OSMemoryStatus memory;
    OSGetMemoryStatus(memory);
    return {{"system", "system", Text(system)},
            {"processor", "processor", Text(processor)},
            {"processors", "processors", "",
             static_cast<std::uint64_t>(OSInfo::GetProcessorCount()), ""},
            {"host", "host", host},
            {"locale", "locale", UsersLocale()},
            {"zone", "time zone", UsersZone()},
            {"program", "program", Text(program)},
            {"temporary", "temporary", Text(folder)},
            {"memory", "memory", "", OSInfo::GetMemorySize(), "MB"},
            {"memoryLoad", "memory in use", "", memory.memoryLoad, "%"},
            {"swapAndMemory", "with swap", "", memory.totalPageFile, "MB"},
            {"swapAndMemoryFree", "with swap free", "", memory.availablePageFile, "MB"}};
}

void PrintJson(const Fact& fact, bool isFirst) {
    std::printf("%s\n  \"%s\": ", isFirst ? "{" : ",", fact.name);
    CGNString text(fact.text.c_str());
    text.EncodeJSONString();
    if (fact.unit)
        std::printf("%" PRIu64, fact.number);
    else
        std::printf("\"%s\"", static_cast<const char*>(text));
}

void PrintLine(const Fact& fact) {
    if (!fact.unit) {
        std::printf("%-15s %s\n", fact.label, fact.text.c_str());
        return;
    }
    const bool isMegabytes = std::strcmp(fact.unit, "MB") == 0;
    std::printf("%-15s %" PRIu64 "%s%s\n", fact.label,
                isMegabytes ? fact.number / (1024 * 1024) : fact.number, *fact.unit ? " " : "",
                fact.unit);
}

Status RunSystem(const Arguments& arguments) {
    Arguments rest;
    bool json = false;
    if (!ParseArguments(arguments, {{"--json", nullptr, nullptr, &json}}, &rest)) return kError;
    if (!rest.empty()) return Complain("system: '" + rest.front() + "' is not expected");
    UseUtf8();
    bool isFirst = true;
    for (const Fact& fact : CollectFacts()) {
        if (json)
            PrintJson(fact, isFirst);
        else
            PrintLine(fact);
        isFirst = false;
    }
    if (json) std::puts("\n}");
    return kOk;
}

}  // namespace

const Command kSystemCommand = {
    "system", "                          shows the machine",
    "genutil system [--json]\n"
    "\n"
    "Shows the system, the processors and the memory that a program can use, the user's locale\n"
    "and time zone, and places of files. Processors and memory are those that the container or\n"
    "the affinity of the process allows.\n"
    "\n"
    "  --json   prints one JSON object; sizes are in bytes\n"
    "\n"
    "Exit status: 0.\n",
    RunSystem};
