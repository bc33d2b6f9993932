// The functions that the keep-awake service uses: those of the platform, except in tests.
#pragma once

namespace genutil {

struct AwakeSystem {
    void* (*load)();
    void* (*find)(void* library);
    void (*call)(void* function, unsigned long flags);
    void (*free)(void* library);
    int period;  // in milliseconds, between calls of the worker
};
extern AwakeSystem g_awakeSystem;

}  // namespace genutil
