// Pieces of lines, whole lines and blocks of streams in any code set, read with buffers of any
// size. The first byte chooses the code sets, the second the size; the rest is the file.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/slow_step.h"
#include "mbutil.h"

namespace {

std::FILE* FileOf(const std::string& text) {
    std::FILE* const stream = std::tmpfile();
    if (!stream) return nullptr;  // no temporary file available
    if (!text.empty()) std::fwrite(text.data(), 1, text.size(), stream);
    std::rewind(stream);
    return stream;
}

// Blocks are as long as whole characters permit. Together they are the file.
void CheckBlocks(const std::string& text, int codeSet, unsigned room) {
    std::FILE* const stream = FileOf(text);
    if (!stream) return;
    const auto starts = slow::Starts(text, codeSet);
    std::string all;
    std::vector<char> block(room + 1);
    for (unsigned got; (got = mbfreadstring(block.data(), room, stream)) > 0;) {
        Check(got <= room && block[got] == 0, "size of a block");
        all.append(block.data(), got);
        const bool whole = std::find(starts.begin(), starts.end(), all.size()) != starts.end();
        Check(whole || room < 4, "blocks end with a character");
        Check(got + 4 > room || all.size() == text.size(), "blocks are as long as possible");
    }
    Check(all == text, "blocks are the file");
    std::fclose(stream);
}

// Pieces of lines: no more than there is room for, and no part of a character where one is cut.
void CheckPieces(const std::string& text, int fileCodeSet, unsigned room) {
    std::FILE* const stream = FileOf(text);
    if (!stream) return;
    std::vector<char> line(room + 1, '#');
    std::size_t calls = 0;
    while (mbfgets(line.data(), static_cast<int>(room), stream, fileCodeSet)) {
        const std::size_t length = std::strlen(line.data());
        Check(length < room, "length of a piece");
        const char* const feed = std::strchr(line.data(), '\n');
        Check(!feed || feed == line.data() + length - 1, "no more than one line");
        Check(line[room] == '#', "no byte beyond the buffer");
        if (room == 1 || ++calls > text.size()) break;
    }
    Check(calls <= text.size(), "an end");
    std::fclose(stream);
}

// Lines of any length are together the converted file.
void CheckLines(const std::string& text, int from, int to) {
    std::FILE* const stream = FileOf(text);
    if (!stream) return;
    mbConverter* const converter = mbOpenConverter(from, to, 0);
    std::vector<char> whole(mbConvertBound(text.size(), from, to));
    mbConversion report = {};
    Check(mbConvert(text.data(), text.size(), from, whole.data(), whole.size(), to, &report) == 1,
          "one call");
    std::string all;
    char* line = nullptr;
    std::size_t size = 0, length = 0;
    while (mbReadLine(converter, stream, &line, &size, &length) == 1) {
        Check(length > 0 && length < size && line[length] == 0, "length of a line");
        if (to == mbUtf8) {
            const std::string read(line, length);
            const bool ends = read.find('\n') == read.size() - 1;
            Check(ends || std::feof(stream), "one line");
        }
        all.append(line, length);
    }
    Check(all == std::string(whole.data(), report.produced), "lines are the converted file");
    std::free(line);
    mbCloseConverter(converter);
    std::fclose(stream);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr struct {
        int file, memory;
    } kPairs[] = {{mbEucJp, mbShiftJis}, {mbShiftJis, mbEucJp}, {mbJis, mbShiftJis},
                  {mbJis, mbEucJp},      {mbBig5, mbEucTw},     {mbShiftJis, mbShiftJis}};
    if (size < 2) return 0;
    const auto& pair = kPairs[data[0] % std::size(kPairs)];
    const unsigned room = 1 + data[1] % 40;
    std::string text(reinterpret_cast<const char*>(data) + 2, size - 2);
    CheckLines(text, pair.file, pair.memory);
    for (const int unicode : {mbUtf16, mbUtf8}) {
        CheckLines(text, unicode, pair.file);
        CheckLines(text, pair.file, unicode);
    }
    text.resize(std::strlen(text.c_str()));
    mbIsMultiByte();
    InitMbutilExt(pair.memory);
    CheckBlocks(text, pair.memory, room);
    CheckPieces(text, pair.file, room);
    return 0;
}
