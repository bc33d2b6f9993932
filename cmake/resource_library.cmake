# resource_library(TARGET OUTPUT [VERSION n.n.n.n LANGUAGE hhhh] SOURCE.rc...): a Windows DLL that contains
# only resources, on every target. This requires only the binary utilities of MinGW, with any C compiler
# as preprocessor. Sources are UTF-8.
find_program(WINDRES i686-w64-mingw32-windres)
find_program(WINDOWS_LD i686-w64-mingw32-ld)
if(NOT WINDRES OR NOT WINDOWS_LD)
  message(FATAL_ERROR "The tools for resource libraries are missing: apt-get install binutils-mingw-w64-i686")
endif()
set(RESOURCE_VERSION_SOURCE ${CMAKE_CURRENT_LIST_DIR}/../resources/version.rc.in)

function(resource_library target output)
  cmake_parse_arguments(RESOURCE "" "VERSION;LANGUAGE" "" ${ARGN})
  set(work ${CMAKE_CURRENT_BINARY_DIR}/${target})
  set(sources ${RESOURCE_UNPARSED_ARGUMENTS})
  if(RESOURCE_VERSION)
    string(REPLACE "." "," RESOURCE_VERSION ${RESOURCE_VERSION})
    configure_file(${RESOURCE_VERSION_SOURCE} ${work}.version.rc @ONLY)
    list(APPEND sources ${work}.version.rc)
  endif()
  get_filename_component(folder ${output} DIRECTORY)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${CMAKE_COMMAND} -E cat ${sources} > ${work}.rc
    COMMAND ${WINDRES} --preprocessor=${CMAKE_C_COMPILER} --preprocessor-arg=-E --preprocessor-arg=-xc
             --codepage=65001 ${work}.rc ${work}.o
    COMMAND ${WINDOWS_LD} -shared -e 0 -s --no-insert-timestamp --enable-auto-image-base
            ${work}.o -o ${output}
    DEPENDS ${sources} VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${output})
endfunction()
