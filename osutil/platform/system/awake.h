// What the library asks of an operating system to keep the machine awake.
#pragma once

namespace genutil::platform {

// The library that the machine is kept awake by, and what it has for that; null when there is none.
void* LoadAwakeLibrary();
void* FindAwakeFunction(void* library);
// kStayAwake until the next call, 0 to sleep as usual. A call is for the calling thread on Windows
// and for the process elsewhere.
void CallAwakeFunction(void* function, unsigned long flags);
constexpr unsigned long kStayAwake = 0x80000001;
void FreeAwakeLibrary(void* library);  // and sleep as usual, elsewhere than on Windows

}  // namespace genutil::platform
