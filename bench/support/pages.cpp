#include "bench/support/pages.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "mbutil.h"

namespace {

std::string ReadText(const std::string& name) {
    std::ifstream file(BENCH_PAGES "/" + name, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    if (text.empty()) {
        std::fprintf(stderr, "no text %s/%s\n", BENCH_PAGES, name.c_str());
        std::exit(1);
    }
    return text;
}

}  // namespace

std::string PagesIn(const char* encoding) {
    return ReadText(std::string("pages.") + encoding);
}

std::string MessagesIn(const char* encoding) {
    return ReadText(std::string("messages.") + encoding);
}

std::string Convert(const std::string& text, int from, int to) {
    char* out = nullptr;
    mbConversion done = {nullptr, 0, 0, 0, 0};
    if (!mbConvertAlloc(text.data(), text.size(), from, &out, to, &done)) std::exit(1);
    std::string result(out, done.produced);
    std::free(out);
    return result;
}
