#include "osutil/thread/threaded.h"

#include <cstdio>

namespace genutil {

std::atomic<unsigned char> g_isThreaded{0};

bool TellError(unsigned error) {
    if (error != 0) std::printf("Error %x\n", error);
    return error == 0;
}

}  // namespace genutil
