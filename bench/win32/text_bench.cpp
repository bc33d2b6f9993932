// Characters counted by the system's own stepping.
#include "bench/text_bench.h"

#include <windows.h>

namespace {

std::size_t CountByCharNext(const Text& text) {
    static constexpr struct {
        const char* name;
        WORD page;
    } kPages[] = {{"euc-jp", 20932}, {"shift-jis", 932}, {"big5", 950}, {"korean", 949}};
    WORD page = 0;
    for (const auto& row : kPages)
        if (std::string(text.set.name) == row.name) page = row.page;
    std::size_t count = 0;
    for (const char* s = text.begin(); *s; ++count) s = CharNextExA(page, s, 0);
    return count;
}

const bool g_registered = (RegisterText("count", "CharNextExA", CountByCharNext), true);

}  // namespace
