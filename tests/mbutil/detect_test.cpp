// Detection of encodings. bench/detection/accuracy.cpp measures it on whole texts.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "mbdetect.h"

namespace {

using std::string_literals::operator""s;

std::vector<mbGuess> Guess(const std::string& text, const char* hint = nullptr) {
    const std::vector<char> exact(text.begin(), text.end());  // an overrun is noticed
    std::vector<mbGuess> guesses(8);
    const int count = mbDetect(exact.data(), exact.size(), hint, guesses.data(), 8);
    guesses.resize(static_cast<std::size_t>(count));
    return guesses;
}

}  // namespace

TEST(Detect, NamesTheEncodingAndLanguageOfAText) {
    const struct {
        int line;
        std::string text;
        std::string name, language;
    } kRows[] = {
        {__LINE__, "tr\350s beau"s, "windows-1252", "fr"},
        {__LINE__, "P\370\355li\232 \236lu\235ou\350k\375 k\371\362"s, "windows-1250", "cs"},
        {__LINE__, "Za\277\363\263\346 g\352\266l\261 ja\274\361"s, "iso-8859-2", "pl"},
        {__LINE__,
         "\321\372\345\370\374 \345\371\270 \375\362\350\365 \354\377\343\352\350\365 \341\363\353\356\352"s,
         "windows-1251", "ru"},
        {__LINE__, "\320\322\311\327\305\324 \315\311\322"s, "koi8-r", "ru"},
        {__LINE__,
         "\343\305 \325\313\322\301\247\316\323\330\313\311\312 \324\305\313\323\324, \247\326\301\313"s,
         "koi8-u", "uk"},
        {__LINE__, "\257\340\250\242\245\342 \254\250\340"s, "ibm866", "ru"},
        {__LINE__, "\315\342\336 \340\343\341\341\332\330\331 \342\325\332\341\342"s, "iso-8859-5",
         "ru"},
        {__LINE__, "\266\355\350\361\371\360\357\351 \345\337\355\341\351 \345\344\376"s,
         "iso-8859-7", "el"},
        {__LINE__, "\346\344 \350\367\361\350 \341\362\341\370\351\372"s, "windows-1255", "he"},
        {__LINE__,
         "\307\341\323\341\307\343 \332\341\355\337\343 \346\321\315\343\311 \307\341\341\345"s,
         "windows-1256", "ar"},
        {__LINE__, "\242\351\315\244\307\322\301\300\322\311\322\344\267\302"s, "windows-874",
         "th"},
        {__LINE__, "T\374rk\347e yaz\375lm\375\376 bir metin, de\360il mi\077"s, "windows-1254",
         "tr"},
        {__LINE__, "\320is ir teksts latvie\360u valod\342"s, "windows-1257", "lv"},
        {__LINE__, "\223\372\226{\214\352\202\314\225\266\217\315\202\305\202\267\201B"s,
         "shift_jis", "ja"},
        {__LINE__, "\306\374\313\334\270\354\244\316\312\270\276\317\244\307\244\271\241\243"s,
         "euc-jp", "ja"},
        {__LINE__, "\326\320\316\304\261\340\302\353\274\354\262\342"s, "gb2312", "zh"},
        {__LINE__, "\263o\254O\244@\254q\301c\305\351\244\244\244\345\252\272\244\345\246r"s,
         "big5", "zh"},
        {__LINE__, "\307\321\261\271\276\356 \305\330\275\272\306\256\300\324\264\317\264\331"s,
         "cp949", "ko"},
        {__LINE__, "\320e\212\202\264\341 \311B\257a\313a\267\263\223\241\224a"s, "johab", "ko"},
        {__LINE__, "\033$BF|K\\8l\033(B"s, "iso-2022-jp", "ja"},
        {__LINE__, "\033$)C\016GQ19>n\017"s, "iso-2022-kr", "ko"},
        {__LINE__, "\345e,g\236\212n0\207e\340zg0Y0\0020"s, "utf-16le", ""},
        {__LINE__, "\000E\000i\000n\000 \000T\000e\000x\000t"s, "utf-16be", ""},
        {__LINE__, "T\0\0\0e\0\0\0x\0\0\0t\0\0\0"s, "utf-32le", ""},
        {__LINE__, "na\303\257ve"s, "utf-8", ""},
    };
    for (const auto& row : kRows) {
        const auto guesses = Guess(row.text);
        ASSERT_FALSE(guesses.empty()) << row.line;
        EXPECT_EQ(guesses[0].name, row.name) << row.line;
        EXPECT_EQ(guesses[0].language, row.language) << row.line;
        EXPECT_GE(guesses[0].confidence, 0.9) << row.line;
        for (std::size_t i = 1; i < guesses.size(); ++i)
            EXPECT_LE(guesses[i].confidence, guesses[i - 1].confidence) << row.line;
    }
}

// Where nothing must be guessed, or the answer has another reason than letters.
TEST(Detect, SaysWhatTheAnswerIsBasedOn) {
    std::string noise;
    unsigned state = 1;
    for (int i = 0; i < 400; ++i) noise += static_cast<char>((state = state * 69069 + 1) >> 24);
    const struct {
        int line;
        std::string text;
        int kind;  // 0: no guess
        std::string evidence;
    } kRows[] = {
        {__LINE__, "", mbGuessAscii, "empty"},
        {__LINE__, "plain\n", mbGuessAscii, "only ASCII, 6 bytes"},
        {__LINE__, std::string(1000, '\0'), 0, ""},
        {__LINE__, noise, 0, ""},
        {__LINE__, "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\1\0\0\0"s, 0, ""},
        {__LINE__, "\xEF\xBB\xBF\xC3\xA9", mbGuessMark, "byte-order mark"},
        {__LINE__, "\xFF\xFE", mbGuessMark, "byte-order mark"},
        {__LINE__, "\0\0\xFE\xFF\0\0\0a"s, mbGuessMark, "byte-order mark"},
        {__LINE__, "d\xC3\xA9j\xC3\xA0", mbGuessValid, "valid UTF-8, 2 multi-byte characters"},
        {__LINE__, "d\xC3\xA9j\xC3", mbGuessValid, "valid UTF-8, 1 multi-byte character"},  // cut
        {__LINE__, "\xB3\xA4", mbGuessTooShort,
         "too short to tell: 1 character above ASCII, as in Chinese"},
    };
    for (const auto& row : kRows) {
        const auto guesses = Guess(row.text);
        EXPECT_EQ(guesses.empty() ? 0 : guesses[0].kind, row.kind) << row.line;
        EXPECT_EQ(guesses.empty() ? "" : guesses[0].evidence, row.evidence) << row.line;
        EXPECT_EQ(!guesses.empty() && guesses[0].confidence >= 0.9,
                  row.kind != 0 && row.kind != mbGuessTooShort)
            << row.line;
    }
}

TEST(Detect, DamagedUtf8IsNeverCertain) {
    std::string text;
    for (int i = 0; i < 40; ++i) text += "на русском ";
    text[100] = '\xFF';
    const auto guesses = Guess(text);
    ASSERT_FALSE(guesses.empty());
    EXPECT_STREQ(guesses[0].name, "utf-8");
    EXPECT_EQ(guesses[0].kind, mbGuessDamaged);
    EXPECT_LT(guesses[0].confidence, 0.9);
}

// The user's language decides between readings that are equally likely without it.
TEST(Detect, FollowsTheHintInDoubt) {
    const struct {
        int line;
        const char *text, *hint, *name;
    } kRows[] = {
        {__LINE__, "\xB3\xA4", nullptr, "gb2312"}, {__LINE__, "\xB3\xA4", "ja_JP", "euc-jp"},
        {__LINE__, "\xB0\xA1", nullptr, "cp949"},  {__LINE__, "\xB0\xA1", "ru_RU", "cp949"},
        {__LINE__, "\xA4\xA4", nullptr, "euc-jp"}, {__LINE__, "\xA4\xA4", "zh_TW.UTF-8", "big5"},
    };
    for (const auto& row : kRows) {
        const auto guesses = Guess(row.text, row.hint);
        ASSERT_FALSE(guesses.empty()) << row.line;
        EXPECT_STREQ(guesses[0].name, row.name) << row.line;
    }
    // It does not outweigh a text.
    EXPECT_STREQ(
        Guess("\300\324\317 \322\325\323\323\313\311\312 \324\305\313\323\324", "ja_JP")[0].name,
        "koi8-r");
    // English texts are almost ASCII.
    for (const char* nothing : {"", "en_US", "C", "?", "a very long name of a locale"})
        EXPECT_EQ(Guess("\xB3\xA4", nothing)[0].confidence, Guess("\xB3\xA4")[0].confidence)
            << nothing;
}

TEST(Detect, WritesAsManyGuessesAsFit) {
    mbGuess guesses[3] = {};
    EXPECT_EQ(mbDetect("\xB3\xA4", 2, nullptr, guesses, 0), 0);
    EXPECT_EQ(mbDetect("\xB3\xA4", 2, nullptr, guesses, -1), 0);
    EXPECT_EQ(mbDetect("\xB3\xA4", 2, nullptr, nullptr, 3), 0);
    EXPECT_EQ(mbDetect("\xB3\xA4", 2, nullptr, guesses, 2), 2);
    EXPECT_STREQ(guesses[2].name, "");
    EXPECT_EQ(mbDetect(nullptr, 99, nullptr, guesses, 1), 1);
    EXPECT_EQ(guesses[0].kind, mbGuessAscii);
}

// Letters are compared where they are, however much ASCII precedes them.
TEST(Detect, FindsTheLettersInALongText) {
    std::string text;
    while (text.size() < 1000000) text += "x = read_file(\"name\");\n";
    text += "P\370\355li\232 \236lu\235ou\350k\375 k\371\362";
    const auto guesses = Guess(text);
    ASSERT_FALSE(guesses.empty());
    EXPECT_STREQ(guesses[0].name, "windows-1250");
}
