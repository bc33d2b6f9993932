# ARM64 Linux. Its programs run where the kernel has an emulator for them: scripts/test-more arm64.
set(DEBIAN_ARCHITECTURE arm64)
set(DEBIAN_PROCESSOR aarch64)
set(DEBIAN_MULTIARCH aarch64-linux-gnu)
set(DEBIAN_LOADER ld-linux-aarch64.so.1)
include(${CMAKE_CURRENT_LIST_DIR}/debian-root.cmake)
