// Lines and blocks of streams in any code set, read with buffers of any size. The first byte
// chooses the code sets, the second the size; the rest is the file.
#include <algorithm>
#include <cstdint>
#include <cstdio>
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

std::string Convert(const std::string& text, int from, int to) {
    std::vector<char> out(3 * text.size() + 1);
    return convertStrExt(text.c_str(), from, out.data(), to);
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

// Lines that are cut and converted are together the converted file.
void CheckLines(const std::string& text, int fileCodeSet, int codeSet, unsigned room) {
    std::FILE* const stream = FileOf(text);
    if (!stream) return;
    std::string all;
    std::vector<char> line(room + 1, '#');
    while (mbfgets(line.data(), static_cast<int>(room), stream, fileCodeSet)) {
        const std::size_t length = std::strlen(line.data());
        Check(length < room, "length of a line");
        const char* const feed = std::strchr(line.data(), '\n');
        Check(!feed || feed == line.data() + length - 1, "no more than one line");
        Check(line[room] == '#', "no byte beyond the buffer");
        all += line.data();
    }
    Check(all == Convert(text, fileCodeSet, codeSet), "lines are the converted file");
    std::fclose(stream);
}

bool IsValid(const std::string& text, int codeSet) {
    unsigned bad = 0;
    return codeSet == mbJis || mbvalidatestring(text.c_str(), &bad, codeSet);
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
    text.resize(std::strlen(text.c_str()));
    mbIsMultiByte();
    InitMbutilExt(pair.memory);
    CheckBlocks(text, pair.memory, room);
    // Room for the longest character, a shift to it and the terminator.
    if (IsValid(text, pair.file)) CheckLines(text, pair.file, pair.memory, 9 + room);
    return 0;
}
