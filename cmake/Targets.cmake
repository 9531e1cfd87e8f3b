# What every target of this project has in common.

include(${CMAKE_CURRENT_LIST_DIR}/FloatPolicy.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/Warnings.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/Sanitizers.cmake)

# On 64-bit Windows the stack is aligned to 16 bytes only, and GCC spills wider vectors
# there with aligned moves all the same; the assembler makes those unaligned.
# tests/layering/aligned.cmake looks whether it has.
function(zel_stack_alignment target)
  if(MINGW AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -Wa,-muse-unaligned-vector-move)
  endif()
endfunction()

function(zel_configure target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  zel_float_policy(${target})
  zel_stack_alignment(${target})
  zel_warnings(${target})
  zel_sanitizers(${target})
endfunction()

# A static library of the system. It exports the project's root as its include
# directory: includes read "lut/CUtilLut.h".
function(zel_library target)
  add_library(${target} STATIC ${ARGN})
  target_include_directories(${target} PUBLIC ${zelfx_SOURCE_DIR})
  zel_configure(${target})
endfunction()
