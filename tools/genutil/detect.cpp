// genutil detect: the encodings of files.
#include <cstdio>

#include "tools/genutil/command.h"
#include "tools/genutil/encoding.h"
#include "tools/genutil/input.h"

namespace {

Status RunDetect(const Arguments& arguments) {
    std::vector<std::string> files;
    if (!ParseArguments(arguments, {}, &files)) return kError;
    if (files.empty()) return Complain("detect: name a file, or \"-\" for standard input");
    Status status = kOk;
    for (const std::string& file : files) {
        std::string text;
        if (!ReadBytes(file, &text)) {
            status = Worse(status, kError);
            continue;
        }
        const Detection found = Detect(text);
        std::printf("%s: %s\n", DisplayName(file).c_str(), Describe(found).c_str());
        if (found.kind == Detection::kUnknown) status = Worse(status, kLoss);
    }
    return status;
}

}  // namespace

const Command kDetectCommand = {
    "detect", "FILE...                   reports the encoding of each file",
    "genutil detect FILE...\n"
    "\n"
    "Reports the encoding of each file, one line per file: ascii, utf-8, utf-16 or utf-16be\n"
    "(with or without a byte-order mark), iso-2022-jp, euc-jp, shift_jis, \"euc-jp or shift_jis\"\n"
    "where every byte is valid in both, or unknown. \"-\" means standard input.\n"
    "\n"
    "Exit status: 0 all were recognised, 1 at least one is unknown, 2 a file cannot be read.\n",
    RunDetect};
