# cmake -DFILE=<file> -DREADELF=<readelf> [-DOBJDUMP=<objdump>] [-DALLOWED=<regex>] -P needs.cmake
#
# Passes when the file loads no library but those of the language; on Windows, where it
# carries these inside, none but those of the system.
if(FILE MATCHES "\\.(aex|dll|exe)$")
  if(NOT DEFINED ALLOWED)
    set(ALLOWED "KERNEL32|msvcrt")
  endif()
  set(suffix "\\.dll")
  execute_process(COMMAND ${OBJDUMP} -p ${FILE}
                  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "DLL Name: [^\n]*" needed "${listing}")
  list(TRANSFORM needed REPLACE "DLL Name: " "")
  if(needed STREQUAL "")
    message(FATAL_ERROR "${FILE} has no table of imports")
  endif()
else()
  if(NOT DEFINED ALLOWED)
    set(ALLOWED "libstdc\\+\\+|libc\\+\\+|libc\\+\\+abi|libm|libgcc_s|libc|ld-linux[-a-z0-9_]*")
  endif()
  set(suffix "\\.so.*")
  execute_process(COMMAND ${READELF} -d ${FILE}
                  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*" needed "${listing}")
  list(TRANSFORM needed REPLACE ".*\\[(.*)\\].*" "\\1")
  if(needed STREQUAL "" AND NOT listing MATCHES "Dynamic section")
    message(FATAL_ERROR "${FILE} has no dynamic section")
  endif()
endif()
foreach(library IN LISTS needed)
  if(NOT library MATCHES "^(${ALLOWED})${suffix}$")
    message(FATAL_ERROR "\n  ${FILE}\n  needs '${library}'")
  endif()
endforeach()
