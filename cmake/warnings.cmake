# Warning flags, applied to every target of the tree by genutil_warnings().
function(genutil_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow
    $<$<BOOL:${GENUTIL_WERROR}>:-Werror>
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast>)
endfunction()
