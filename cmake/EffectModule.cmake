# zel_effect_module(zel_<effect> SOURCE <file>)
#
# A loadable effect module: the entry point, the file that chooses the effect class,
# and the libraries. It exports exactly one name, `main`.

set(ZEL_MODULE_DIR ${CMAKE_BINARY_DIR}/modules)

function(zel_effect_module target)
  cmake_parse_arguments(ARG "" "SOURCE" "" ${ARGN})
  add_library(${target} MODULE ${ARG_SOURCE} ${zelfx_SOURCE_DIR}/host/Entry.cpp)
  target_link_libraries(${target} PRIVATE zel_effects)
  zel_configure(${target})
  set_target_properties(${target} PROPERTIES
    PREFIX ""
    LIBRARY_OUTPUT_DIRECTORY ${ZEL_MODULE_DIR})
  if(WIN32)
    set_target_properties(${target} PROPERTIES SUFFIX .aex)
  elseif(APPLE)
    set_target_properties(${target} PROPERTIES BUNDLE ON BUNDLE_EXTENSION plugin)
    target_link_options(${target} PRIVATE -Wl,-exported_symbol,_main)
  else()
    set_target_properties(${target} PROPERTIES SUFFIX .so)
    set(exports ${zelfx_SOURCE_DIR}/cmake/module_exports.map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${exports})
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${exports})
    if(NOT ZEL_SANITIZE)
      target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
  endif()
  set_property(GLOBAL APPEND PROPERTY ZEL_MODULES ${target})
endfunction()
