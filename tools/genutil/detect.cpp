// genutil detect: the encodings of files.
#include <cstdio>

#include "tools/genutil/command.h"
#include "tools/genutil/guess.h"
#include "tools/genutil/input.h"
#include "tools/genutil/utf8.h"

namespace {

using Guesses = std::vector<mbGuess>;

void PrintLine(const std::string& name, const Guesses& guesses) {
    std::string answer = "unknown";
    if (!guesses.empty()) {
        const mbGuess& best = guesses[0];
        answer = best.kind == mbGuessTooShort
                     ? "too short to tell: " + ListGuesses(guesses)
                     : NameOf(best) + " (" + ConfidenceText(best.confidence) + ")";
    }
    std::printf("%s: %s\n", name.c_str(), answer.c_str());
}

void PrintAll(const std::string& name, const Guesses& guesses) {
    std::printf("%s:%s\n", name.c_str(), guesses.empty() ? " unknown" : "");
    for (const mbGuess& guess : guesses)
        std::printf("  %s  %-12s  %s\n", ConfidenceText(guess.confidence).c_str(),
                    NameOf(guess).c_str(), guess.evidence);
}

// Quotes a text in JSON. A byte that is not UTF-8, as a file name may contain, becomes U+FFFD.
std::string Quote(const std::string& text) {
    std::string quoted = "\"";
    for (std::size_t i = 0; i < text.size();) {
        const int length = Utf8Length(text, i);
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (length == 0) {
            quoted += "\xEF\xBF\xBD";
        } else if (c < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", c);
            quoted += escape;
        } else {
            if (c == '"' || c == '\\') quoted += '\\';
            quoted.append(text, i, static_cast<std::size_t>(length));
        }
        i += length == 0 ? 1 : static_cast<std::size_t>(length);
    }
    return quoted + "\"";
}

void PrintJson(const std::string& name, const Guesses& guesses) {
    std::string line = "{\"file\":" + Quote(name) + ",\"guesses\":[";
    for (std::size_t i = 0; i < guesses.size(); ++i) {
        const mbGuess& guess = guesses[i];
        char confidence[16];
        std::snprintf(confidence, sizeof confidence, "%.4f", guess.confidence);
        line += std::string(i ? "," : "") + "{\"encoding\":" + Quote(guess.name) +
                ",\"confidence\":" + confidence + ",\"mark\":" + std::to_string(guess.markLength) +
                ",\"language\":" + Quote(guess.language) +
                ",\"evidence\":" + Quote(guess.evidence) + "}";
    }
    std::printf("%s]}\n", line.c_str());
}

Status RunDetect(const Arguments& arguments) {
    std::vector<std::string> files;
    bool all = false, json = false;
    const std::vector<Option> options = {{"--all", nullptr, nullptr, &all},
                                         {"--json", nullptr, nullptr, &json}};
    if (!ParseArguments(arguments, options, &files)) return kError;
    if (files.empty()) return Complain("detect: name a file, or \"-\" for standard input");
    Status status = kOk;
    for (const std::string& file : files) {
        std::string text;
        if (!ReadBytes(file, &text)) {
            status = Worse(status, kError);
            continue;
        }
        const Guesses guesses = Guess(text);
        (json ? PrintJson : all ? PrintAll : PrintLine)(DisplayName(file), guesses);
        if (guesses.empty() || guesses[0].confidence < kTrusted) status = Worse(status, kLoss);
    }
    return status;
}

}  // namespace

const Command kDetectCommand = {
    "detect", "[--all] FILE...           reports the encoding of each file",
    "genutil detect [--all | --json] FILE...\n"
    "\n"
    "Reports the likeliest encoding of each file with a confidence from 0 to 1, one line per "
    "file:\n"
    "\"windows-1250 (0.97)\", \"utf-8 with byte-order mark (1.00)\", \"ascii (1.00)\", \"too short "
    "to\n"
    "tell\" with the best guesses, or \"unknown\" for data that is no text in any encoding. \"-\" "
    "means\n"
    "standard input. The user's language is taken to be likelier than others.\n"
    "\n"
    "  --all   lists all guesses with their reasons\n"
    "  --json  prints an object in JSON for each file, one per line\n"
    "\n"
    "Of several encodings in which a text is the same, only the most usual one is named.\n"
    "\n"
    "Exit status: 0 all were recognised, 1 at least one is uncertain (below 0.90) or unknown,\n"
    "2 a file cannot be read.\n",
    RunDetect};
