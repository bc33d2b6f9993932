// Any bytes give guesses in order, each with a confidence and a reason, which do not depend on what
// was detected before or on how many are wanted.
#include <cstdint>
#include <cstring>
#include <vector>

#include "fuzz/check.h"
#include "mbdetect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<char> text(data, data + size);
    const char* const hint = size > 0 && data[0] % 2 ? "ja_JP" : nullptr;
    mbGuess guesses[40], first[1];
    const int count = mbDetect(text.data(), size, hint, guesses, 40);
    Check(count >= 0 && count < 40, "no more guesses than encodings");
    for (int i = 0; i < count; ++i) {
        const mbGuess& guess = guesses[i];
        Check(guess.confidence >= 0 && guess.confidence <= 1, "a probability");
        Check(guess.name[0] != '\0' && guess.evidence[0] != '\0', "name and reason");
        Check(std::memchr(guess.evidence, 0, sizeof guess.evidence) != nullptr, "terminated");
        Check(guess.kind >= mbGuessMark && guess.kind <= mbGuessDamaged, "a kind");
        Check(guess.markLength >= 0 && static_cast<std::size_t>(guess.markLength) <= size,
              "the mark is in the text");
    }
    const int one = mbDetect(text.data(), size, hint, first, 1);
    Check(one == (count > 0), "the best is always found");
    Check(one == 0 || std::strcmp(first[0].name, guesses[0].name) == 0, "and is the same");
    return 0;
}
