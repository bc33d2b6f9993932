// Lines, blocks and whole files that are converted when they are read or written. Lines and blocks
// of any size are tried by fuzz/stream_fuzz.cpp.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "mbutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/temporary_file.h"

namespace {

const std::string kSjis = "\x82\xA0\x83\x41\xB1x";
const std::string kEuc = "\xA4\xA2\xA5\xA2\x8E\xB1x";
const std::string kJis = "\x1B$B$\"%\"\x1B(I1\x1B(Bx";

std::string WithoutReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

std::string ReadLines(const std::string& bytes, int n, int codeSet, const char* mode = "rb") {
    const TemporaryFile file(bytes);
    const OpenFile stream(file.Path(), mode);
    std::string all;
    char buf[200];
    for (int calls = 0; mbfgets(buf, n, stream, codeSet); ++calls) {
        if (std::string(buf).size() >= static_cast<std::size_t>(n) || calls > 1000)
            return "too long";
        all += buf;
    }
    return all;
}

// A line is read in pieces of n - 1 bytes. Of a piece that grows, what does not fit is lost.
TEST(MbStream, ReadsPiecesOfLines) {
    static const struct {
        int line, current, file, n;
        const char *text, *read;
    } kRows[] = {
        {__LINE__, 4, 5, 100, "\xB1\xB2\n\xB3", "\x8E\xB1\x8E\xB2\n\x8E\xB3"},
        {__LINE__, 4, 5, 4, "\xB1\xB2\xB3\xB4", "\x8E\xB1\x8E\xB4"},
        {__LINE__, 5, 4, 4, "ab\x8E\xB1\x8E\xB2", "ab\x81\xAC\xB2"},
        {__LINE__, 5, 5, 4, "ab\x82\xA0\x82\xA0", "ab\x82\xA0\x82\xA0"},
        {__LINE__, 3, 3, 4, "\x1B$B$\"\x1B(B", "\x1B$B$\"\x1B(B"},
    };
    for (const auto& row : kRows) {
        const CodeSetGuard guard(row.current);
        EXPECT_EQ(ReadLines(row.text, row.n, row.file), row.read) << row.line;
    }
    const CodeSetGuard guard(4);
    for (const int n : {8, 9, 10, 11, 100}) {
        const std::string lf = ReadLines("\xB1\nab\xB3\ncd\n", n, 5, "rt");
        EXPECT_EQ(lf, "\x8E\xB1\nab\x8E\xB3\ncd\n") << n;
        EXPECT_EQ(
            ReadLines("\xB1\r\nab\xB3\r\ncd\r\n", n, 5, "rt"),
            WithoutReturns(lf) == lf ? ReadLines("\xB1\r\nab\xB3\r\ncd\r\n", 100, 5, "rt") : "")
            << n;
    }
}

TEST(MbStream, DoesNotConvertInASingleByteCodeSet) {
    const CodeSetGuard guard(0);
    EXPECT_EQ(ReadLines(kEuc, 100, 4), kEuc);
    const TemporaryFile file;
    {
        const OpenFile stream(file.Path(), "wb");
        EXPECT_GE(mbfputs(kSjis.c_str(), stream, 4), 0);
        EXPECT_EQ(mbfputs(nullptr, stream, 4), 0);
    }
    EXPECT_EQ(file.Bytes(), kSjis);
}

TEST(MbStream, WritesInTheCodeSetOfTheFile) {
    const CodeSetGuard guard(5);
    for (const auto& [codeSet, bytes] :
         {std::pair{4, kEuc}, {3, kJis}, {0, kSjis}, {5, kSjis}, {9, kSjis}}) {
        const TemporaryFile file;
        {
            const OpenFile stream(file.Path(), "wb");
            EXPECT_GE(mbfputs(kSjis.c_str(), stream, codeSet), 0);
        }
        EXPECT_EQ(file.Bytes(), bytes) << codeSet;
    }
    EXPECT_EQ(mbfputs(nullptr, stdout, 4), 0);
    char buf[8];
    EXPECT_EQ(mbfgets(nullptr, 8, stdin, 4), nullptr);
    EXPECT_EQ(ReadLines("", 8, 4), "");
    const TemporaryFile file("a");
    const OpenFile stream(file.Path(), "rb");
    EXPECT_EQ(mbfgets(buf, 0, stream, 4), nullptr);
    EXPECT_STREQ(mbfgets(buf, 2, stream, 4), "a");
}

// Fragments are together one text.
TEST(MbStream, WritesFragmentsInJis) {
    const CodeSetGuard guard(5);
    const TemporaryFile file;
    {
        const OpenFile stream(file.Path(), "wb");
        for (const char* part : {"\x82\xA0", ": abc\n", "\xB1", "\x82\xA0"})
            EXPECT_GE(mbfputs(part, stream, 3), 0);
    }
    EXPECT_EQ(file.Bytes(), "\x1B$B$\"\x1B(B: abc\n\x1B(I1\x1B(B\x1B$B$\"\x1B(B");
}

// Two streams in turns, of which one is in UTF-16.
TEST(MbStream, ReadsWholeLines) {
    const TemporaryFile jis("\x1B$B$\"$$\x1B(B\n\x1B$B$&" + std::string(9000, '!') + "\n$&"),
        wide(std::string("\xFE\xFF\x30\x42\0\n\x0A\x30\0\n\0", 11));
    const OpenFile first(jis.Path(), "rb"), second(wide.Path(), "rb");
    mbConverter *a = mbOpenConverter(3, 5, 0), *b = mbOpenConverter(64, 65, 0);
    char* line = nullptr;
    std::size_t size = 0, length = 0;
    const auto next = [&](mbConverter* converter, std::FILE* stream) {
        const int result = mbReadLine(converter, stream, &line, &size, &length);
        return result == 1 ? std::string(line, length) : std::to_string(result);
    };
    EXPECT_EQ(next(a, first), "\x82\xA0\x82\xA2\n");
    EXPECT_EQ(next(b, second), "\xE3\x81\x82\n");
    EXPECT_EQ(next(a, first).size(), 9003u);
    EXPECT_EQ(next(b, second), "\xE0\xA8\xB0\n");
    EXPECT_EQ(next(a, first), "$&");
    EXPECT_EQ(next(b, second), "\xEF\xBF\xBD");
    EXPECT_EQ(next(a, first) + next(b, second), "00");
    std::free(line);
    mbCloseConverter(a);
    mbCloseConverter(b);
}

TEST(MbStream, ReadsBlocksOfWholeCharacters) {
    static const struct {
        int line, codeSet;
        const char* bytes;
        unsigned n, block;  // wanted and read
    } kRows[] = {
        {__LINE__, 5, "abc\x82\xA0", 4, 3},
        {__LINE__, 5, "\x82\xA0\x82\xA0", 1, 1},  // no character fits: part of one
        {__LINE__, 5, "ab\x80z", 3, 2},           // a final byte that is no character may begin one
        {__LINE__, 10, "\x8E\xA2\xA1\xA1\x8E\xA2\xA1\xA1", 7, 4},
        {__LINE__, 0, "\x82\xA0\x82\xA0", 3, 3},
        {__LINE__, 5, "", 3, 0},
    };
    for (const auto& row : kRows) {
        const CodeSetGuard guard(row.codeSet);
        const TemporaryFile file(row.bytes);
        const OpenFile stream(file.Path(), "rb");
        char block[16];
        EXPECT_EQ(mbfreadstring(block, row.n, stream), row.block) << row.line;
    }
}

TEST(MbFile, ConvertsWholeFilesBothWays) {
    const CodeSetGuard guard(5);
    std::string sjis, euc;
    for (int i = 0; i < 400; ++i) {  // one line far longer than any buffer, then short ones
        sjis += kSjis + (i < 300 ? "" : "\n");
        euc += kEuc + (i < 300 ? "" : "\n");
    }
    const TemporaryFile native(sjis), converted, back;
    ASSERT_EQ(mbconvertnativefile(native.Path(), converted.Path(), 0, 4), 1);
    ASSERT_EQ(mbconvertfile2native(converted.Path(), back.Path(), 0, 4), 1);
    EXPECT_EQ(WithoutReturns(converted.Bytes()), euc);
    EXPECT_EQ(WithoutReturns(back.Bytes()), sjis);
    ASSERT_EQ(mbconvertnativefile(native.Path(), converted.Path(), 1, 4), 1);
    EXPECT_EQ(WithoutReturns(converted.Bytes()), euc + euc);
}

TEST(MbFile, StopsAtALineThatBeginsWithNulAndFailsWithoutFiles) {
    const CodeSetGuard guard(5);
    const TemporaryFile in(std::string("a\n\0b\nc\n", 7)), out;
    EXPECT_EQ(mbconvertnativefile(in.Path(), out.Path(), 0, 4), 1);
    EXPECT_EQ(out.Bytes().substr(0, 1), "a");
    EXPECT_EQ(out.Bytes().find('c'), std::string::npos);
    EXPECT_EQ(mbconvertnativefile("no/such/file", out.Path(), 0, 4), 0);
    EXPECT_EQ(mbconvertnativefile(in.Path(), "no/such/folder/file", 0, 4), 0);
    EXPECT_EQ(mbconvertfile2native("no/such/file", out.Path(), 0, 4), 0);
}

TEST(MbFile, ConvertsAFileToItself) {
    const CodeSetGuard guard(5);
    const std::string text(70000, '\xB1');
    const TemporaryFile file("\x82\xA0" + text);
    EXPECT_EQ(mbconvertnativefile(file.Path(), file.Path(), 0, 3), 1);
    EXPECT_EQ(file.Bytes(), "\x1B$B$\"\x1B(I" + std::string(70000, '1') + "\x1B(B");
    EXPECT_EQ(mbconvertfile2native_ex(file.Path(), file.Path(), 1, 3, 5, nullptr), 1);
    EXPECT_EQ(file.Bytes().substr(70011), "\x82\xA0" + text);
}

TEST(MbFile, ReportsLossesOfAnyPair) {
    const TemporaryFile in("\xE3\x81\x82\n\xF0\x9F\x98\x80z"), out;
    std::size_t lostAt[4];
    mbConversion report = {lostAt, 4, 0, 0, 0};
    ASSERT_EQ(mbconvertfile2native_ex(in.Path(), out.Path(), 0, 65, 5, &report), 1);
    EXPECT_EQ(out.Bytes(), "\x82\xA0\n\x81\xACz");
    EXPECT_EQ(report.lost, 1u);
    EXPECT_EQ(lostAt[0], 4u);
    EXPECT_EQ(report.consumed, 9u);
    EXPECT_EQ(mbconvertfile2native_ex("no/such/file", out.Path(), 0, 65, 5, nullptr), 0);
    EXPECT_EQ(mbconvertfile2native_ex(in.Path(), out.Path(), 0, 65, 63, nullptr), 0);
    EXPECT_EQ(mbconvertfile2native_ex(in.Path(), "no/such/folder/file", 0, 65, 5, nullptr), 0);
}

}  // namespace
