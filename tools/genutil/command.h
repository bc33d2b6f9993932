// The subcommands and what they share on the command line.
#pragma once

#include <string>
#include <vector>

// Exit statuses, from good to bad: a run ends with the worst it met.
enum Status {
    kOk = 0,
    kLoss = 1,   // something did not survive, or is invalid
    kError = 2,  // wrong usage, or a file could not be read or written
};

inline Status Worse(Status a, Status b) {
    return a > b ? a : b;
}

using Arguments = std::vector<std::string>;

struct Command {
    const char* name;
    const char* summary;
    const char* help;
    Status (*run)(const Arguments& arguments);
};
extern const Command kDetectCommand, kConvertCommand, kTextCommand, kLocaleCommand, kLocalesCommand,
    kZonesCommand, kShowCommand, kReadCommand, kConfigCommand, kVersionCommand, kMessageCommand,
    kSystemCommand, kDdeCommand, kAutomationCommand;

// An option of a subcommand: where its value goes, or the flag it sets, or where its values go.
struct Option {
    const char* name;       // "--from"
    const char* shortName;  // "-o", or null
    std::string* value;
    bool* flag;
    std::vector<std::string>* values = nullptr;  // of one that may be repeated
};

// Sorts arguments into options and the rest, which goes into `files`. "--name=value" is understood;
// behind "--" nothing is an option. False after a message about what is wrong.
bool ParseArguments(const Arguments& arguments, const std::vector<Option>& options,
                    std::vector<std::string>* files);

// Writes "genutil: " and the message as a line on standard error. Returns kError.
Status Complain(const std::string& message);

// From this on progress is that of one file of several.
void PlaceInRow(std::size_t number, std::size_t count);
// Shows "[2/9] reading name" on a terminal as standard error, until the next message, progress or
// ClearProgress() wipes it out.
void ShowProgress(const std::string& name, const std::string& what);
void ClearProgress();

// Files from this size on have their progress shown.
constexpr std::size_t kLargeFile = std::size_t{32} << 20;
