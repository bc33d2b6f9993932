// The subcommands, and the command-line functions that they share.
#pragma once

#include <string>
#include <vector>

// Exit statuses, from best to worst. A run ends with the worst that occurred.
enum Status {
    kOk = 0,
    kLoss = 1,   // something was lost in conversion, or is invalid
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
    kSystemCommand, kTraceCommand, kDdeCommand, kAutomationCommand;

// An option of a subcommand, with the place for its value, for the flag it sets, or for its values.
struct Option {
    const char* name;       // "--from"
    const char* shortName;  // "-o", or null
    std::string* value;
    bool* flag;
    std::vector<std::string>* values = nullptr;  // for an option that may be repeated
};

// Parses options, and stores all other arguments in `files`. "--name=value" is understood. After
// "--" nothing is an option. Returns false after a message that describes the error.
bool ParseArguments(const Arguments& arguments, const std::vector<Option>& options,
                    std::vector<std::string>* files);

// Writes "genutil: " and the message as a line on standard error. Returns kError.
Status Complain(const std::string& message);

// Declares that progress is shown for one file of several.
void PlaceInRow(std::size_t number, std::size_t count);
// Shows "[2/9] reading name" on standard error if that is a terminal. The text is removed by the
// next message, progress or ClearProgress().
void ShowProgress(const std::string& name, const std::string& what);
void ClearProgress();

// Minimum size of files for which progress is shown.
constexpr std::size_t kLargeFile = std::size_t{32} << 20;
