// Platform layer: keeping the machine awake.
#pragma once

namespace genutil::platform {

// Return the library that keeps the machine awake, and its function for that. Return null if there
// is none.
void* LoadAwakeLibrary();
void* FindAwakeFunction(void* library);
// Keeps the machine awake until the next call (kStayAwake), or lets it sleep as usual (0). A call
// applies to the calling thread on Windows and to the process elsewhere.
void CallAwakeFunction(void* function, unsigned long flags);
constexpr unsigned long kStayAwake = 0x80000001;
void FreeAwakeLibrary(void* library);  // elsewhere than on Windows, also lets the machine sleep as
                                       // usual

}  // namespace genutil::platform
