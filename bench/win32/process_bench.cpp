#include "bench/process_bench.h"

#include <algorithm>
#include <string>

namespace {

// With the separators that the command accepts.
const char* TypePages() {
    static std::string s_command = "cmd /c type " BENCH_PAGES "\\pages.EUC-JP";
    std::replace(s_command.begin() + 12, s_command.end(), '/', '\\');
    return s_command.c_str();
}

}  // namespace

std::array<BenchCommand, 2> Commands() {
    return {{{"run true", "cmd /c rem"}, {"run, 10 MB of output", TypePages()}}};
}

std::FILE* OpenPipe(const char* command) {
    return _popen(command, "rb");
}

int ClosePipe(std::FILE* pipe) {
    return _pclose(pipe);
}
