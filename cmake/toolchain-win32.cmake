# 32-bit Windows. Windows callers align the stack to 4 bytes, so entry points realign it before SSE2 code
# runs.
set(MINGW_PROCESSOR i686)
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
