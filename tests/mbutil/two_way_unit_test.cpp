// The search that takes over in repetitive text, beside the standard library's.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "genutil/mbutil/two_way.h"
#include "mbutil.h"
#include "tests/support/code_set_guard.h"

TEST(TwoWay, FindsEveryOccurrence) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 60, 'a'), needle(1 + random() % 8, 'a');
        for (std::string* s : {&text, &needle})
            for (char& c : *s) c = static_cast<char>('a' + (random() % 5 == 0));
        if (round % 3 == 0) needle += needle;
        const auto bytes = [](const std::string& s) {
            return reinterpret_cast<const unsigned char*>(s.data());
        };
        genutil::TwoWayFinder finder(bytes(text), text.size(), bytes(needle), needle.size());
        for (std::size_t at = text.find(needle); at != text.npos; at = text.find(needle, at + 1))
            ASSERT_EQ(finder.Next(), bytes(text) + at) << text << " " << needle;
        ASSERT_EQ(finder.Next(), nullptr) << text << " " << needle;
    }
}

// Long enough for the linear search, in which a match may also begin within a character.
TEST(TwoWay, TakesOverInRepetitiveText) {
    const CodeSetGuard guard(mbShiftJis);
    std::string hay, needle;
    for (int i = 0; i < 20000; ++i) hay += "\x83\x83";
    for (int i = 0; i < 3000; ++i) needle += "\x83\x83";
    needle += "A";
    const std::string inside = hay + "\x83" + "A", text = inside + needle + "\x83";
    EXPECT_EQ(mbstrstr(inside.c_str(), needle.c_str()), nullptr);
    EXPECT_EQ(mbstrstr(text.c_str(), needle.c_str()) - text.c_str(), 40002);
    EXPECT_EQ(mbstrrstr(text.c_str(), needle.c_str()) - text.c_str(), 40002);
    EXPECT_EQ(mbstrrstr(hay.c_str(), hay.substr(0, 6000).c_str()) - hay.c_str(), 34000);
}

// Also where the search of the C library would do for text of single bytes; it can take minutes
// here.
TEST(TwoWay, IsLinearInEveryCodeSet) {
    std::string hay, needle;
    for (int i = 0; i < 2000000; ++i) hay += "ab";
    for (int i = 0; i < 500000; ++i) needle += "ab";
    needle += "b";
    const std::string text = hay + needle;
    for (const int codeSet : {int{mbWestern}, int{mbUtf8}, int{mbShiftJis}}) {
        const CodeSetGuard guard(codeSet);
        EXPECT_EQ(mbstrstr(hay.c_str(), needle.c_str()), nullptr) << codeSet;
        EXPECT_EQ(mbstrstr(text.c_str(), needle.c_str()) - text.c_str(), 4000000) << codeSet;
    }
}
