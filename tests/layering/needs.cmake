# cmake -DFILE=<file> -DREADELF=<readelf> [-DALLOWED=<regex>] -P needs.cmake
#
# Passes when the file loads no library but those of the language.
if(NOT DEFINED ALLOWED)
  set(ALLOWED "libstdc\\+\\+|libc\\+\\+|libc\\+\\+abi|libm|libgcc_s|libc|ld-linux[-a-z0-9_]*")
endif()
execute_process(COMMAND ${READELF} -d ${FILE}
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*" needed "${listing}")
if(needed STREQUAL "" AND NOT listing MATCHES "Dynamic section")
  message(FATAL_ERROR "${FILE} has no dynamic section")
endif()
foreach(line IN LISTS needed)
  string(REGEX REPLACE ".*\\[(.*)\\].*" "\\1" library "${line}")
  if(NOT library MATCHES "^(${ALLOWED})\\.so")
    message(FATAL_ERROR "\n  ${FILE}\n  needs '${library}'")
  endif()
endforeach()
