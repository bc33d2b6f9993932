// Detection of Japanese text: memory and stream decide alike and stop at the same byte.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "mbutil.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::size_t consumed = 0;
    const int result = mbDetectJapanese(reinterpret_cast<const char*>(data), size, &consumed);
    if (consumed > size) std::abort();
    if ((result == 0 || result == 6) && consumed != size) std::abort();

    std::FILE* const stream = std::tmpfile();
    if (stream == nullptr) return 0;  // no place for one
    if (size != 0) std::fwrite(data, 1, size, stream);
    std::rewind(stream);
    if (DetectJPCodeType(stream) != result) std::abort();
    if (std::ftell(stream) != static_cast<long>(consumed)) std::abort();
    std::fclose(stream);
    return 0;
}
