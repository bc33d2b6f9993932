# 32-bit x86 Linux with SSE2, and times and file sizes of 64 bits.
set(DEBIAN_ARCHITECTURE i386)
set(DEBIAN_PROCESSOR i686)
set(DEBIAN_MULTIARCH i386-linux-gnu)
set(DEBIAN_LOADER ld-linux.so.2)
set(flags "-msse2 -mfpmath=sse -D_TIME_BITS=64 -D_FILE_OFFSET_BITS=64")
set(CMAKE_C_FLAGS_INIT "${flags}")
set(CMAKE_CXX_FLAGS_INIT "${flags}")
include(${CMAKE_CURRENT_LIST_DIR}/debian-root.cmake)
