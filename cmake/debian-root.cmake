# Linux on the processor DEBIAN_PROCESSOR (Debian's architecture DEBIAN_ARCHITECTURE), built with
# Debian's cross compiler and the libraries of a root that scripts/setup lays out. Programs take the
# loader and the libraries of that root, wherever they are started. A toolchain file sets the names
# and includes this one.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CROSSCOMPILING FALSE)  # the build may start the programs
set(CMAKE_SYSTEM_PROCESSOR ${DEBIAN_PROCESSOR})
set(CMAKE_C_COMPILER ${DEBIAN_PROCESSOR}-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER ${DEBIAN_PROCESSOR}-linux-gnu-g++)

if(DEFINED ENV{GENUTIL_CACHE})
  set(root $ENV{GENUTIL_CACHE})
elseif(DEFINED ENV{XDG_CACHE_HOME})
  set(root $ENV{XDG_CACHE_HOME}/genutil)
else()
  set(root $ENV{HOME}/.cache/genutil)
endif()
string(APPEND root /linux-${DEBIAN_ARCHITECTURE})
set(CMAKE_SYSROOT ${root})
# The libraries of the root find each other by the program's path, which the new form is not for.
set(flags "-Wl,--disable-new-dtags -Wl,--dynamic-linker=${root}/lib/${DEBIAN_LOADER}")
string(APPEND flags " -Wl,-rpath,${root}/usr/lib/${DEBIAN_MULTIARCH}:${root}/lib/${DEBIAN_MULTIARCH}")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "${flags}")
endforeach()

set(CMAKE_LIBRARY_ARCHITECTURE ${DEBIAN_MULTIARCH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
