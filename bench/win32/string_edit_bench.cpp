// Letter case by the system, which has nothing comparable for other operations.
#include "bench/string_edit_bench.h"

#include <windows.h>

void AddPeers(const Text& text) {
    Add("upper-case", text, "CharUpperBuff", [&text] {
        std::string copy = text.native;
        CharUpperBuffA(copy.data(), static_cast<DWORD>(copy.size()));
        Keep(copy);
    });
}
