# The requirements of the library. Other systems are rejected here with a message.
if(NOT CMAKE_SYSTEM_NAME MATCHES "^(Linux|Windows)$")
  message(FATAL_ERROR "genutil supports Linux and Windows, not ${CMAKE_SYSTEM_NAME}.")
endif()
if(NOT CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang)$")
  message(FATAL_ERROR "genutil is compiled with GCC 12 or clang 14 and later, not with "
    "${CMAKE_CXX_COMPILER_ID}. On Windows use MinGW-w64; its DLL serves C functions to any compiler.")
endif()
if(CMAKE_CXX_BYTE_ORDER STREQUAL "BIG_ENDIAN")
  message(FATAL_ERROR "genutil supports little-endian processors only.")
endif()
