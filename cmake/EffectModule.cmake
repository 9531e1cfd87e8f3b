# zel_module(<name> SOURCES <file>... LIBS <library>... FOLDER <folder> [EXPORTS <name>...])
#
# A loadable module: the entry point beside the sources. It exports `main` and the names
# given, nothing else, and on Windows it brings its run-time library along.
#
# zel_effect_modules(<target> SOURCE <file>)
#
# An effect in <build>/modules, in the form that ZEL_HOST_CONFORMANT chooses. With tests,
# the other form is built for them, as <target>_other in <build>/tests/modules.

set(ZEL_MODULE_DIR ${CMAKE_BINARY_DIR}/modules)

function(zel_module target)
  cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;LIBS;EXPORTS" ${ARGN})
  add_library(${target} MODULE ${ARG_SOURCES} ${zelfx_SOURCE_DIR}/host/Entry.cpp)
  target_link_libraries(${target} PRIVATE ${ARG_LIBS})
  zel_configure(${target})
  set(exports main ${ARG_EXPORTS})
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
    foreach(name IN LISTS exports)
      target_link_options(${target} PRIVATE -Wl,-exported_symbol,_${name})
    endforeach()
  else()
    set_target_properties(${target} PROPERTIES SUFFIX .so)
    list(JOIN exports "; " exports)
    set(map ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
    file(CONFIGURE OUTPUT ${map} CONTENT "{ global: ${exports}; local: *; };\n" @ONLY)
    target_link_options(${target} PRIVATE -Wl,--version-script=${map})
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${map})
    if(NOT ZEL_SANITIZE)
      target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
  endif()
endfunction()

function(zel_effect_module target)
  cmake_parse_arguments(ARG "CONFORMANT" "SOURCE;NAME;FOLDER" "" ${ARGN})
  if(ARG_CONFORMANT)
    zel_module(${target} SOURCES ${ARG_SOURCE} ${zelfx_SOURCE_DIR}/packaging/PluginData.cpp
               LIBS zel_effects_conformant FOLDER ${ARG_FOLDER}
               EXPORTS PluginDataEntryFunction2)
    target_compile_definitions(${target} PRIVATE ZEL_MODULE="${ARG_NAME}")
    set_property(GLOBAL APPEND PROPERTY ZEL_CONFORMANT_MODULES ${target})
  else()
    zel_module(${target} SOURCES ${ARG_SOURCE} LIBS zel_effects FOLDER ${ARG_FOLDER})
    set_property(GLOBAL APPEND PROPERTY ZEL_DEFAULT_MODULES ${target})
  endif()
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${ARG_NAME})
  zel_module_resources(${target} ${ARG_NAME})
endfunction()

# What the host reads before it loads the module: inside the file on Windows, beside the
# program in a bundle of the Mac.
function(zel_module_resources target name)
  set(made ${CMAKE_CURRENT_BINARY_DIR}/${target})
  if(MINGW)
    add_custom_command(OUTPUT ${made}.rc
                       COMMAND zel_resources windows ${name} ${made}.rc VERBATIM)
    add_custom_command(OUTPUT ${made}.res.o DEPENDS ${made}.rc VERBATIM
                       COMMAND ${CMAKE_RC_COMPILER} -O coff -i ${made}.rc -o ${made}.res.o)
    target_sources(${target} PRIVATE ${made}.res.o)
  elseif(APPLE)
    set(form mac64)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
      set(form mac32)
    endif()
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM
      COMMAND zel_resources ${form} ${name} $<TARGET_BUNDLE_CONTENT_DIR:${target}>)
    add_dependencies(${target} zel_resources)
  endif()
endfunction()

function(zel_effect_modules target)
  set(form "")
  set(other CONFORMANT)
  if(ZEL_HOST_CONFORMANT)
    set(form CONFORMANT)
    set(other "")
  endif()
  zel_effect_module(${target} NAME ${target} FOLDER ${ZEL_MODULE_DIR} ${form} ${ARGN})
  set_property(GLOBAL APPEND PROPERTY ZEL_MODULES ${target})
  if(ZEL_BUILD_TESTS)
    zel_effect_module(${target}_other NAME ${target} FOLDER ${CMAKE_BINARY_DIR}/tests/modules
                      ${other} ${ARGN})
  endif()
endfunction()
