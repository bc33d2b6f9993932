// Detection of Japanese text gives the same result for memory and for a stream, and stops at the
// same byte.
#include <cstdint>
#include <cstdio>

#include "fuzz/check.h"
#include "mbutil.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::size_t consumed = 0;
    const int result = mbDetectJapanese(reinterpret_cast<const char*>(data), size, &consumed);
    Check(consumed <= size, "no more is read than there is");
    Check((result != 0 && result != 6) || consumed == size, "all is read before giving up");

    std::FILE* const stream = std::tmpfile();
    if (stream == nullptr) return 0;  // no temporary file available
    if (size != 0) std::fwrite(data, 1, size, stream);
    std::rewind(stream);
    Check(DetectJPCodeType(stream) == result, "memory and stream decide alike");
    Check(std::ftell(stream) == static_cast<long>(consumed), "and stop at the same byte");
    std::fclose(stream);
    return 0;
}
