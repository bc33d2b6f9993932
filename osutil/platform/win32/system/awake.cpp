// Keeping the machine awake by the system's own function.
#include "osutil/platform/system/awake.h"

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

void* LoadAwakeLibrary() {
    return LoadLibraryA("Kernel32");
}

void* FindAwakeFunction(void* library) {
    return reinterpret_cast<void*>(
        GetProcAddress(static_cast<HMODULE>(library), "SetThreadExecutionState"));
}

void CallAwakeFunction(void* function, unsigned long flags) {
    using SetState = EXECUTION_STATE(WINAPI*)(EXECUTION_STATE);
    // 0 only ends a single request. A continuous one is ended by the flag alone.
    reinterpret_cast<SetState>(function)(flags ? flags : ES_CONTINUOUS);
}

void FreeAwakeLibrary(void* library) {
    FreeLibrary(static_cast<HMODULE>(library));
}

}  // namespace genutil::platform
