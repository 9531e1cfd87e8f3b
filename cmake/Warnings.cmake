# Warnings of our own code. ZEL_WERROR turns them into errors (presets and CI do).

option(ZEL_WERROR "Treat warnings as errors" OFF)

function(zel_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2 -Wundef
    # GCC 12 sees an overlap in every "text" + std::string; there is none.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<BOOL:${ZEL_WERROR}>:-Werror>)
endfunction()
