# resource_library(TARGET OUTPUT [VERSION n.n.n.n LANGUAGE hhhh] [PROCESSOR i686|x86_64] SOURCE.rc...):
# a Windows DLL that contains only resources, on every target. It is built for the processor of the
# target if that is Windows, or else for i686. This requires only the binary utilities of MinGW, with any
# C compiler as preprocessor. Sources are UTF-8.
if(WIN32)
  set(RESOURCE_DEFAULT_PROCESSOR ${CMAKE_SYSTEM_PROCESSOR})
else()
  set(RESOURCE_DEFAULT_PROCESSOR i686)
endif()
set(RESOURCE_VERSION_SOURCE ${CMAKE_CURRENT_LIST_DIR}/../resources/version.rc.in)

function(resource_library target output)
  cmake_parse_arguments(RESOURCE "" "VERSION;LANGUAGE;PROCESSOR" "" ${ARGN})
  if(NOT RESOURCE_PROCESSOR)
    set(RESOURCE_PROCESSOR ${RESOURCE_DEFAULT_PROCESSOR})
  endif()
  find_program(WINDRES_${RESOURCE_PROCESSOR} ${RESOURCE_PROCESSOR}-w64-mingw32-windres)
  find_program(WINDOWS_LD_${RESOURCE_PROCESSOR} ${RESOURCE_PROCESSOR}-w64-mingw32-ld)
  if(NOT WINDRES_${RESOURCE_PROCESSOR} OR NOT WINDOWS_LD_${RESOURCE_PROCESSOR})
    string(REPLACE _ - package binutils-mingw-w64-${RESOURCE_PROCESSOR})
    message(FATAL_ERROR "The tools for resource libraries are missing: apt-get install ${package}")
  endif()
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
    COMMAND ${WINDRES_${RESOURCE_PROCESSOR}} --preprocessor=${CMAKE_C_COMPILER} --preprocessor-arg=-E --preprocessor-arg=-xc
             --codepage=65001 ${work}.rc ${work}.o
    COMMAND ${WINDOWS_LD_${RESOURCE_PROCESSOR}} -shared -e 0 -s --no-insert-timestamp --enable-auto-image-base
            ${work}.o -o ${output}
    DEPENDS ${sources} VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${output})
endfunction()
