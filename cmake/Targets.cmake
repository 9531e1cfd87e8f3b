# What every target of this project has in common.

include(${CMAKE_CURRENT_LIST_DIR}/FloatPolicy.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/Warnings.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/Sanitizers.cmake)

function(zel_configure target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  zel_float_policy(${target})
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
