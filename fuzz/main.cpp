// Replays a corpus without libFuzzer: every file of a folder, and each of its beginnings up to 256
// bytes, so that a fuzz target is compiled and run by every build.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// A copy of exactly the right size lets a sanitizer see a read behind the end.
static void RunOn(const std::vector<std::uint8_t>& bytes, std::size_t size) {
    const auto exact = std::make_unique<std::uint8_t[]>(size);
    std::copy_n(bytes.begin(), size, exact.get());
    LLVMFuzzerTestOneInput(exact.get(), size);
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CORPUS-FOLDER\n", argv[0]);
        return 2;
    }
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream in(entry.path(), std::ios::binary);
        const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
        RunOn(bytes, bytes.size());
        for (std::size_t size = 0; size < bytes.size() && size < 256; ++size) RunOn(bytes, size);
        ++files;
    }
    std::printf("%d files replayed\n", files);
    return files > 0 ? 0 : 1;
}
