#include "tools/genutil/guess.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::size_t kListed = 3;

std::string UserLocale() {
    char name[16];
    return mbGetLocalePart(nullptr, mbPartName, name, sizeof name) > 0 ? name : "";
}

}  // namespace

std::vector<mbGuess> Guess(const std::string& text) {
    std::vector<mbGuess> guesses(16);
    const int count = mbDetect(text.data(), text.size(), UserLocale().c_str(), guesses.data(),
                               static_cast<int>(guesses.size()));
    guesses.resize(static_cast<std::size_t>(count));
    return guesses;
}

Encoding EncodingOf(const mbGuess& guess) {
    if (guess.codeSet == mbUtf16Be) return {mbUtf16, true};
    return {guess.codeSet};
}

std::string NameOf(const mbGuess& guess) {
    if (guess.kind == mbGuessAscii) return "ascii";
    return std::string(guess.name) + (guess.markLength ? " with byte-order mark" : "");
}

std::string ConfidenceText(double confidence) {
    char text[16];
    // 0.996 is not certain.
    std::snprintf(text, sizeof text, "%.2f", confidence < 1 ? std::min(confidence, 0.99) : 1.0);
    return text;
}

std::string ListGuesses(const std::vector<mbGuess>& guesses) {
    std::string list;
    for (std::size_t i = 0; i < guesses.size() && i < kListed; ++i)
        list += (i ? ", " : "") + NameOf(guesses[i]) + " (" +
                ConfidenceText(guesses[i].confidence) + ")";
    return list;
}
