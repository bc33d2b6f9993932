#include "tools/genutil/input.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "mbutil.h"
#include "tools/genutil/command.h"
#include "tools/genutil/guess.h"
#include "tools/genutil/system.h"

namespace {

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

bool ReadAll(std::FILE* file, const std::string& name, std::string* bytes) {
    constexpr std::size_t kMb = 1 << 20;
    char block[65536];
    std::size_t shown = 0;
    while (const std::size_t count = std::fread(block, 1, sizeof block, file)) {
        bytes->append(block, count);
        if (bytes->size() < shown + kLargeFile) continue;
        shown = bytes->size();
        ShowProgress(name, std::to_string(shown / kMb) + " MB of ");
    }
    ClearProgress();
    return std::ferror(file) == 0;
}

bool Fail(const std::string& path, const std::string& what) {
    Complain(DisplayName(path) + ": " + what);
    return false;
}

bool ChooseEncoding(const std::string& path, bool guess, Input* input) {
    const std::vector<mbGuess> guesses = Guess(input->text);
    if (guesses.empty())
        return Fail(path, "its encoding is not recognised; name it (genutil --help lists them)");
    const mbGuess& best = guesses[0];
    const bool trusted = best.confidence >= kTrusted;
    if (!trusted && !guess)
        return Fail(path, "its encoding is uncertain: " + ListGuesses(guesses) +
                              "; name it with --from, or accept the first with --guess");
    if (!trusted)
        Complain(input->name + ": read as " + NameOf(best) + "; possible are " +
                 ListGuesses(guesses));
    input->encoding = EncodingOf(best);
    return true;
}

}  // namespace

std::string DisplayName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

bool ReadBytes(const std::string& path, std::string* bytes) {
    bytes->clear();
    if (path == "-")
        return ReadAll(stdin, DisplayName(path), bytes) || Fail(path, "cannot be read");
    switch (KindOf(path)) {
        case FileKind::kMissing:
            return Fail(path, "no such file");
        case FileKind::kFolder:
            return Fail(path, "is a folder; name the files in it");
        default:
            break;
    }
    const std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "rb"));
    if (!file || !ReadAll(file.get(), path, bytes))
        return Fail(path, std::string("cannot be read: ") + std::strerror(errno));
    return true;
}

bool CheckEncodingName(const std::string& encodingName) {
    if (encodingName.empty() || encodingName == "auto" || FindEncoding(encodingName)) return true;
    Complain("unknown encoding '" + encodingName + "'; known are:\n" + ListEncodings());
    return false;
}

bool ReadInput(const std::string& path, const std::string& encodingName, bool guess, Input* input) {
    input->name = DisplayName(path);
    if (!ReadBytes(path, &input->text)) return false;
    input->detected = encodingName.empty() || encodingName == "auto";
    if (input->detected) {
        if (!ChooseEncoding(path, guess, input)) return false;
    } else {
        input->encoding = *FindEncoding(encodingName);
    }
    // A byte-order mark takes precedence over the byte order in the name.
    const Encoding other{input->encoding.codeSet, !input->encoding.bigEndian};
    if (input->encoding.codeSet == mbUtf16 && MarkLength(input->text, other))
        input->encoding = other;
    input->markLength = MarkLength(input->text, input->encoding);
    if (input->encoding.bigEndian) SwapUnits(&input->text);
    return true;
}
