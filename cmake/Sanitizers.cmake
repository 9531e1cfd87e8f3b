# ZEL_SANITIZE is a list for -fsanitize, such as "address,undefined".
# Undefined behaviour ends the program, so that a test cannot pass over it.

set(ZEL_SANITIZE "" CACHE STRING "Sanitizers to build with, comma-separated")

option(ZEL_FUZZ "Instrument everything for libFuzzer; needs clang++" OFF)

option(ZEL_COVERAGE "Count what runs, for llvm-cov; needs clang++" OFF)

function(zel_sanitizers target)
  if(ZEL_COVERAGE)
    set(flags -fprofile-instr-generate -fcoverage-mapping)
    target_compile_options(${target} PRIVATE ${flags})
    target_link_options(${target} PRIVATE ${flags})
  endif()
  if(ZEL_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    target_link_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(NOT ZEL_SANITIZE)
    return()
  endif()
  set(flags -fsanitize=${ZEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  if(ZEL_SANITIZE MATCHES "undefined")
    list(APPEND flags -fsanitize=float-cast-overflow)
  endif()
  target_compile_options(${target} PRIVATE ${flags})
  target_link_options(${target} PRIVATE ${flags})
endfunction()
