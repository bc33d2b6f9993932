# Flags that make faults harder to exploit, for installed targets: genutil_hardening(TARGET).
function(genutil_hardening target)
  if(NOT GENUTIL_HARDENING OR GENUTIL_SANITIZE OR GENUTIL_FUZZ)
    return()
  endif()
  target_compile_options(${target} PRIVATE -fstack-protector-strong
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  if(WIN32)
    # The stack protector is in a library of the compiler, which every user of the objects must link.
    target_link_options(${target} PRIVATE -Wl,--dynamicbase -Wl,--nxcompat
      INTERFACE $<BUILD_INTERFACE:-fstack-protector-strong>)
    target_link_options(${target} PRIVATE -fstack-protector-strong)
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
      target_link_options(${target} PRIVATE -Wl,--high-entropy-va)
    endif()
    return()
  endif()
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86)$")
    target_compile_options(${target} PRIVATE -fcf-protection=full)
  elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
    target_compile_options(${target} PRIVATE -mbranch-protection=standard)
  endif()
  target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endfunction()
