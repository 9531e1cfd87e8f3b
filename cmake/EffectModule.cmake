# zel_module(<name> SOURCES <file>... LIBS <library>... [FOLDER <folder>])
#
# A loadable module: the entry point beside the sources. It exports exactly one name,
# `main`, and on Windows it brings its run-time library along.
#
# zel_effect_module(zel_<effect> SOURCE <file>)
#
# One of the effects, in <build>/modules.

set(ZEL_MODULE_DIR ${CMAKE_BINARY_DIR}/modules)

function(zel_module target)
  cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;LIBS" ${ARGN})
  add_library(${target} MODULE ${ARG_SOURCES} ${zelfx_SOURCE_DIR}/host/Entry.cpp)
  target_link_libraries(${target} PRIVATE ${ARG_LIBS})
  zel_configure(${target})
  set_target_properties(${target} PROPERTIES
    PREFIX ""
    LIBRARY_OUTPUT_DIRECTORY ${ARG_FOLDER})
  if(WIN32)
    set_target_properties(${target} PROPERTIES SUFFIX .aex)
    if(MINGW)
      target_link_options(${target} PRIVATE -static)
    endif()
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
endfunction()

function(zel_effect_module target)
  cmake_parse_arguments(ARG "" "SOURCE" "" ${ARGN})
  zel_module(${target} SOURCES ${ARG_SOURCE} LIBS zel_effects FOLDER ${ZEL_MODULE_DIR})
  set_property(GLOBAL APPEND PROPERTY ZEL_MODULES ${target})
endfunction()
