// Text of any code set converted to 16-bit characters and back, with every smaller room. The first
// byte chooses the code set, the rest is the text.
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "genutil/mbutil/wide_convert.h"
#include "mbutil.h"

using namespace genutil;

namespace {

constexpr int kCodeSets[] = {mbWestern, mbShiftJis, mbEucJp,     mbJis,       mbGb2312, mbEucTw,
                             mbUtf16,   mbBig5,     mbIso2022Kr, mbIso2022Cn, mbUtf8,   mbKorean};

using Units = std::vector<unsigned short>;

// No unit beyond the limit is written, no pair is split, and a terminator is stored if it fits.
void CheckWide(const std::string& text, const Units& whole, std::size_t limit) {
    const std::vector<char> exact(text.begin(), text.end());  // without a terminator
    Units wide(limit + 1, 0xAAAA);
    const long stored = ToWide(wide.data(), limit, exact.data(), exact.size());
    const long fitting = static_cast<long>(limit < whole.size() ? limit : whole.size());
    Check(stored <= fitting && stored >= fitting - 1, "as many characters as fit");
    Check(std::equal(wide.begin(), wide.begin() + stored, whole.begin()), "the same characters");
    Check(wide[limit] == 0xAAAA, "no unit beyond the limit");
    Check(stored == static_cast<long>(limit) || wide[std::size_t(stored)] == 0, "a terminator");
}

// Stores whole characters, which are read back as the beginning of the text.
void CheckNarrow(const Units& whole, std::size_t limit) {
    std::string narrow(limit + 1, '#');
    const long stored = ToNarrow(narrow.data(), limit, whole.data());
    Check(stored >= 0 && stored <= static_cast<long>(limit), "as many bytes as fit");
    Check(narrow[limit] == '#', "no byte beyond the limit");
    const auto length = static_cast<std::size_t>(stored);
    Check(length == limit || narrow[length] == 0, "a terminator");
    Units back(length + 1);
    const long read = ToWide(back.data(), back.size(), narrow.data(), length);
    Check(read >= 0 && std::equal(back.begin(), back.begin() + read, whole.begin()),
          "whole characters");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    mbIsMultiByte();
    InitMbutilExt(kCodeSets[data[0] % std::size(kCodeSets)]);
    std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    text.resize(std::min<std::size_t>(std::strlen(text.c_str()), 48));
    if (text.empty()) return 0;
    const std::int64_t length = WideLength(text.c_str(), text.size());
    Units whole(text.size() + 1);
    const long stored = ToWide(whole.data(), whole.size(), text.c_str(), text.size());
    Check(stored == length, "the length that was promised");
    if (length < 0) {
        ToWideBytewise(whole.data(), text.c_str(), text.size());
        return 0;
    }
    whole.resize(static_cast<std::size_t>(length) + 1);
    for (std::size_t limit = 0; limit <= whole.size(); ++limit) CheckWide(text, whole, limit);
    const std::int64_t bytes = NarrowLength(whole.data());
    Check(bytes >= 0, "what was read can be written");
    for (std::size_t limit = 0; limit <= static_cast<std::size_t>(bytes) + 1; ++limit)
        CheckNarrow(whole, limit);
    return 0;
}
