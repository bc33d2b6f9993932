// genutil text: examines a file character by character.
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "mbutil.h"
#include "tools/genutil/characters.h"
#include "tools/genutil/command.h"
#include "tools/genutil/utf8.h"

namespace {

constexpr std::size_t kListed = 20;

struct Figures {
    std::size_t characters = 0;
    std::size_t lines = 0;
    std::size_t ofSize[5] = {};  // number of characters by their length in bytes
    std::size_t invalid = 0;
    std::vector<std::string> positions;  // positions of the first invalid characters
};

// Returns the source indexes of well-formed codes without a character.
std::vector<std::size_t> CodesWithoutCharacter(const Input& input) {
    std::vector<std::size_t> lostAt;
    const std::string& text = input.text;
    for (std::size_t pass = 0; pass < 2; ++pass) {  // first to count, then to record
        mbConversion conversion = {};
        conversion.lostAt = lostAt.data();
        conversion.lostAtSize = lostAt.size();
        char* out = nullptr;
        if (!mbConvertAlloc(text.data(), text.size(), input.encoding.codeSet, &out, mbUtf8,
                            &conversion))
            return {};
        std::free(out);
        if (conversion.lost == 0) break;
        lostAt.resize(conversion.lost);
    }
    return lostAt;
}

Figures Count(const Input& input) {
    Figures figures;
    const std::vector<std::size_t> lostAt = CodesWithoutCharacter(input);
    auto lost = lostAt.begin();
    bool lineEnded = true;
    for (CharacterWalk walk(input); walk.Next();) {
        ++figures.characters;
        figures.lines += lineEnded;
        lineEnded = walk.EndsLine();
        ++figures.ofSize[walk.Bytes().size()];
        while (lost != lostAt.end() && *lost < walk.At()) ++lost;
        if (walk.Valid() && (lost == lostAt.end() || *lost != walk.At())) continue;
        if (figures.invalid++ < kListed) figures.positions.push_back(DescribePosition(walk));
    }
    return figures;
}

void Print(const Input& input, const Figures& figures) {
    std::printf("%s\n", input.name.c_str());
    std::printf("  code set      %s%s%s\n", NameOf(input.encoding).c_str(),
                input.markLength ? " with byte-order mark" : "",
                input.detected ? " (detected)" : "");
    std::printf("  bytes         %zu\n", input.text.size());
    std::printf("  characters    %zu\n", figures.characters);
    std::printf("  lines         %zu\n", figures.lines);
    for (int size = 1; size <= 4; ++size)
        if (figures.ofSize[size])
            std::printf("  of %d byte%s    %zu\n", size, size > 1 ? "s" : " ",
                        figures.ofSize[size]);
    std::printf("  invalid       %zu\n", figures.invalid);
    for (const std::string& position : figures.positions) std::printf("    %s\n", position.c_str());
    if (figures.invalid > figures.positions.size())
        std::printf("    and %zu more\n", figures.invalid - figures.positions.size());
}

std::string Glyph(const std::string& utf8) {
    if (utf8 == "\n") return "\\n";
    if (utf8 == "\r") return "\\r";
    if (utf8 == "\t") return "\\t";
    const unsigned code = CodePoint(utf8);
    return code < 0x20 || (code >= 0x7F && code < 0xA0) ? "" : utf8;
}

void Show(const Input& input, std::size_t count) {
    std::puts("\n    index  bytes        code point  character");
    CharacterWalk walk(input);
    for (std::size_t i = 0; i < count && walk.Next(); ++i) {
        const std::string bytes = Hexadecimal(walk.Bytes());
        const std::string utf8 = walk.ToUtf8();
        if (utf8.empty()) {
            std::printf("  %7zu  %-11s  invalid\n", i, bytes.c_str());
            continue;
        }
        char code[16];
        std::snprintf(code, sizeof code, "U+%04X", CodePoint(utf8));
        std::printf("  %7zu  %-11s  %-10s  %s\n", i, bytes.c_str(), code, Glyph(utf8).c_str());
    }
}

bool ParseCount(const std::string& text, std::size_t* count) {
    char* end = nullptr;
    const unsigned long value = std::strtoul(text.c_str(), &end, 10);
    *count = value;
    return !text.empty() && *end == 0 && text[0] >= '0' && text[0] <= '9';
}

Status RunText(const Arguments& arguments) {
    std::string codeSet, show;
    std::vector<std::string> files;
    const std::vector<Option> options = {{"--code-set", nullptr, &codeSet, nullptr},
                                         {"--show", nullptr, &show, nullptr}};
    if (!ParseArguments(arguments, options, &files)) return kError;
    if (files.empty()) return Complain("text: name a file, or \"-\" for standard input");
    std::size_t count = 0;
    if (!show.empty() && !ParseCount(show, &count))
        return Complain("'" + show + "' is not a number of characters to show");
    if (!CheckEncodingName(codeSet)) return kError;
    Status status = kOk;
    for (const std::string& file : files) {
        Input input;
        if (!ReadInput(file, codeSet, true, &input)) {
            status = Worse(status, kError);
            continue;
        }
        const Figures figures = Count(input);
        Print(input, figures);
        if (count) Show(input, count);
        if (figures.invalid) status = Worse(status, kLoss);
    }
    return status;
}

}  // namespace

const Command kTextCommand = {
    "text", "FILE...                   counts characters and lines, finds invalid bytes",
    "genutil text [--code-set NAME] [--show N] FILE...\n"
    "\n"
    "Counts a file's bytes, characters, lines and characters of each size, and reports where "
    "bytes\n"
    "are invalid: by line and column, which count from 1, and by byte, which counts from 0.\n"
    "\n"
    "  --code-set NAME   the encoding of the files; detected if not given\n"
    "  --show N          lists the first N characters: bytes, code point and the character\n"
    "                    itself\n"
    "\n"
    "Exit status: 0 all is valid, 1 something is invalid, 2 wrong usage or a file cannot be\n"
    "read.\n",
    RunText};
