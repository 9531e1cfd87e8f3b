# cmake -DFILE=<module> -DNAMES=<names> -DNM=<nm> [-DOBJDUMP=<objdump>] -P exports.cmake
#
# Passes when the file exports exactly NAMES, sorted and parted by commas. Files of Windows
# are read with objdump: nm does not know their table of exports.
if(FILE MATCHES "\\.(aex|dll)$")
  execute_process(COMMAND ${OBJDUMP} -p ${FILE}
                  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table" "" listing "${listing}")
  string(REGEX REPLACE "\n\n.*" "\n" listing "${listing}")
  string(REGEX REPLACE "\\[[ 0-9]+\\]" "" listing "${listing}")
else()
  execute_process(COMMAND ${NM} -D --defined-only ${FILE}
                  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
endif()
string(REGEX MATCHALL "[^ \n]+\n" names "${listing}")  # last word of every line
list(TRANSFORM names STRIP)
list(SORT names)
list(JOIN names "," names)
if(names STREQUAL "")
  set(names "nothing")
endif()
if(NOT names STREQUAL NAMES)
  message(FATAL_ERROR "\n  ${FILE}\n  exports '${names}', wanted '${NAMES}'")
endif()
