# Windows on the processor MINGW_PROCESSOR, built with Debian's MinGW-w64 and run in the Wine of
# scripts/wine. A toolchain file sets the processor and includes this one.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${MINGW_PROCESSOR})
set(CMAKE_C_COMPILER ${MINGW_PROCESSOR}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${MINGW_PROCESSOR}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${MINGW_PROCESSOR}-w64-mingw32-windres)

# The DLL imports only DLLs of Windows and includes the compiler's runtime.
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
endforeach()

set(CMAKE_FIND_ROOT_PATH /usr/${MINGW_PROCESSOR}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine)
