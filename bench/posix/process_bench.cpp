#include "bench/process_bench.h"

std::array<BenchCommand, 2> Commands() {
    return {{{"run true", "true"}, {"run, 10 MB of output", "head -c 10485760 /dev/zero"}}};
}

std::FILE* OpenPipe(const char* command) {
    return popen(command, "re");
}

int ClosePipe(std::FILE* pipe) {
    return pclose(pipe);
}
