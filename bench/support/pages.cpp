#include "bench/support/pages.h"

#include <iconv.h>

#include <cstdio>
#include <cstdlib>

std::string Iconv(const char* to, const char* from, std::string text) {
    const iconv_t handle = iconv_open(to, from);
    std::string out(text.size() * 4 + 64, '\0');
    char *in = text.data(), *dst = out.data();
    std::size_t left = text.size(), room = out.size();
    while (left != 0 && iconv(handle, &in, &left, &dst, &room) == static_cast<std::size_t>(-1)) {
        ++in;
        --left;
    }
    iconv(handle, nullptr, nullptr, &dst, &room);
    iconv_close(handle);
    out.resize(out.size() - room);
    return out;
}

std::string ReadCommand(const char* command) {
    std::string text;
    std::FILE* pipe = popen(command, "r");
    if (pipe == nullptr) return text;
    char block[65536];
    while (const std::size_t n = std::fread(block, 1, sizeof block, pipe)) text.append(block, n);
    pclose(pipe);
    return text;
}

std::string PagesIn(const char* encoding) {
    // Without what JIS lacks, so that the Japanese encodings all hold the same text.
    static const std::string pages = [] {
        const std::string utf8 =
            ReadCommand("find /usr/share/man/ja -name '*.gz' | sort | xargs zcat 2>/dev/null");
        if (utf8.size() < 1000000) {
            std::fprintf(stderr, "no Japanese manual pages: apt-get install manpages-ja\n");
            std::exit(1);
        }
        return Iconv("UTF-8", "ISO-2022-JP", Iconv("ISO-2022-JP", "UTF-8", utf8));
    }();
    return Iconv(encoding, "UTF-8", pages);
}
