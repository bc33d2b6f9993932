// Texts substituted in messages.
#include <gtest/gtest.h>

#include "genutil/string/message_text.h"
#include "tests/support/rows.h"

TEST(MessageText, SubstitutesTenNumberedTexts) {
    const char* const texts[genutil::kMostSubstitutions] = {"one", "%2", nullptr, "",     "five",
                                                            "six", "7",  "8",     "nine", "ten"};
    ExpectTexts(
        [&](const char* message) { return std::string(genutil::Substitute(message, texts)); },
        {
            {__LINE__, "", ""},
            {__LINE__, "nothing", "nothing"},
            {__LINE__, "a %5 b %1", "a five b one"},
            {__LINE__, "%10%9", "tennine"},
            {__LINE__, "%11 %100", "one1 ten0"},
            {__LINE__, "[%2]", "[%2]"},  // inserted texts are not searched again
            {__LINE__, "[%3%4]", "[]"},
            {__LINE__, "100%% %%1", "100% %1"},
            {__LINE__, "%0 %s %", "%0 %s %"},
            {__LINE__, "\x83%1", "\x83one"},
        });
}
