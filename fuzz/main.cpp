// Replays a corpus without libFuzzer, so that every build compiles and runs the fuzz targets.
// Inputs are every file of a directory, each of its beginnings up to 256 bytes, and combinations of
// their pieces, which are the same in each run.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Input = std::vector<std::uint8_t>;

constexpr std::size_t kLongest = 256;
constexpr int kMixtures = 8000;

// A copy of the exact size lets a sanitizer see a read after the end.
void RunOn(const Input& bytes, std::size_t size) {
    const auto exact = std::make_unique<std::uint8_t[]>(size);
    std::copy_n(bytes.begin(), size, exact.get());
    LLVMFuzzerTestOneInput(exact.get(), size);
}

// Returns the beginning of a file with bytes of other files, or any bytes, in some places,
// sometimes repeated many times.
Input Mixture(const std::vector<Input>& corpus, std::mt19937& random) {
    const auto below = [&](std::size_t n) { return static_cast<std::ptrdiff_t>(random() % n); };
    const auto one = [&]() -> const Input& { return corpus[random() % corpus.size()]; };
    const auto any = [&] { return static_cast<std::uint8_t>(random()); };
    const Input& base = one();
    Input bytes(base.begin(), base.begin() + below(std::min(base.size(), kLongest) + 1));
    for (std::ptrdiff_t edits = below(8); edits >= 0; --edits) {
        const Input& other = one();
        const auto from = other.begin() + below(other.size());
        Input piece(from, from + std::min(other.end() - from, 1 + below(8)));
        if (below(4) == 0) piece.assign(1, any());
        auto at = bytes.begin() + below(bytes.size() + 1);
        if (below(2) == 0) at = bytes.erase(at, at + std::min(bytes.end() - at, below(8)));
        for (std::ptrdiff_t times = below(8) == 0 ? below(64) : 1; times > 0; --times)
            at = bytes.insert(at, piece.begin(), piece.end());
    }
    // Values of the first bytes, which choose the case, are equally likely.
    for (std::size_t i = 0; i < std::min<std::size_t>(bytes.size(), 4); ++i)
        if (below(4) == 0) bytes[i] = any();
    return bytes;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CORPUS-FOLDER\n", argv[0]);
        return 2;
    }
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
        if (entry.file_size() > 0) paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<Input> corpus;
    for (const auto& path : paths) {
        std::ifstream in(path, std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        const Input& bytes = corpus.back();
        RunOn(bytes, bytes.size());
        for (std::size_t size = 0; size < bytes.size() && size < kLongest; ++size)
            RunOn(bytes, size);
    }
    std::mt19937 random(2026);
    for (int i = 0; !corpus.empty() && i < kMixtures; ++i) {
        const Input mixture = Mixture(corpus, random);
        RunOn(mixture, mixture.size());
    }
    std::printf("%zu files replayed\n", corpus.size());
    return corpus.empty() ? 1 : 0;
}
