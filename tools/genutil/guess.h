// Detection of a text's encoding.
#pragma once

#include <string>
#include <vector>

#include "mbdetect.h"
#include "tools/genutil/encoding.h"

constexpr double kTrusted = 0.9;  // the confidence from which on a guess needs no confirmation

// Returns the guesses, the best first. The user's language is more likely than others.
std::vector<mbGuess> Guess(const std::string& text);

// Returns the encoding of a guess.
Encoding EncodingOf(const mbGuess& guess);

// Returns the name of the encoding: "ascii", "utf-8 with byte-order mark".
std::string NameOf(const mbGuess& guess);

// Returns the best guesses with their confidence: "gb2312 (0.40), euc-jp (0.10)".
std::string ListGuesses(const std::vector<mbGuess>& guesses);

// Returns a confidence as text, such as "0.97". Only certainty is "1.00".
std::string ConfidenceText(double confidence);
