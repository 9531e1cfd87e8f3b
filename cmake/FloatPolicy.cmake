# Floating point, the same for every target in every build type. This is the only
# place that sets such flags; docs/exactness.md gives the reasons.
#
# Compilers fuse a multiplication and an addition by default, and a fused one
# rounds once instead of twice: 96 of the 1024 codes of a neutral colour balance
# would change. x87 arithmetic would keep intermediates too wide.

function(zel_float_policy target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /fp:precise)
  else()
    target_compile_options(${target} PRIVATE -ffp-contract=off -fno-fast-math)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86|i[3-6]86|AMD64")
      target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
    endif()
  endif()
endfunction()
