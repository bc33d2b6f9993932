// What the keep-awake service stands on: the platform's functions, but in tests.
#pragma once

namespace genutil {

struct AwakeSystem {
    void* (*load)();
    void* (*find)(void* library);
    void (*call)(void* function, unsigned long flags);
    void (*free)(void* library);
    int period;  // milliseconds between calls of the worker
};
extern AwakeSystem g_awakeSystem;

}  // namespace genutil
