// genutil dde: sends a command to a program that is a DDE server.
#include <cstdlib>

#include "mbutil.h"
#include "osdde.h"
#include "tools/genutil/command.h"
#include "tools/genutil/system.h"

namespace {

Status Send(const Arguments& texts, long timeout) {
    CGNString error;
    if (!OSDDEInit(&error)) return Complain(std::string("dde: ") + static_cast<const char*>(error));
    const int codeSet = InitMbutilExt(mbUtf8);
    const unsigned char taken =
        OSDDESend(ArgumentToUtf8(texts[0]).c_str(), ArgumentToUtf8(texts[1]).c_str(),
                  ArgumentToUtf8(texts[2]).c_str(), timeout, &error);
    InitMbutilExt(codeSet);
    OSDDEUnInit();
    if (taken) return kOk;
    Complain(std::string("dde: ") + static_cast<const char*>(error));
    return kLoss;
}

Status RunDde(const Arguments& arguments) {
    std::string timeout;
    std::vector<std::string> texts;
    if (!ParseArguments(arguments, {{"--timeout", nullptr, &timeout, nullptr}}, &texts))
        return kError;
    if (texts.size() != 3) return Complain("dde: name a service, a topic and a command");
    char* end = nullptr;
    const double seconds = timeout.empty() ? 10 : std::strtod(timeout.c_str(), &end);
    if (!(seconds > 0 && seconds <= 86400) || (end && *end != 0))
        return Complain("dde: '" + timeout + "' is not a number of seconds up to 86400");
    return Send(texts, static_cast<long>(seconds * 1000));
}

}  // namespace

const Command kDdeCommand = {
    "dde", "SERVICE TOPIC COMMAND     sends a command to another program by DDE",
    "genutil dde [--timeout SECONDS] SERVICE TOPIC COMMAND\n"
    "\n"
    "Connects by DDE to the program that serves the service and topic and sends it the\n"
    "command, which is usually in brackets: genutil dde PROGMAN PROGMAN \"[ShowGroup(A,1)]\".\n"
    "Windows only.\n"
    "\n"
    "  --timeout SECONDS  the limit for the whole exchange (10)\n"
    "\n"
    "Exit status: 0 the program took the command, 1 it did not, or there is none, 2 wrong\n"
    "usage, or DDE is not available on this system.\n",
    RunDde};
