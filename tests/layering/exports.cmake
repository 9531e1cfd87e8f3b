# cmake -DFILE=<module> -DNM=<nm> -P exports.cmake
#
# Passes when the file exports exactly one name, `main`.
execute_process(COMMAND ${NM} -D --defined-only ${FILE}
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^ \n]+\n" names "${listing}")  # last word of every line
list(TRANSFORM names STRIP)
list(JOIN names ", " names)
if(names STREQUAL "")
  set(names "nothing")
endif()
if(NOT names STREQUAL "main")
  message(FATAL_ERROR "\n  ${FILE}\n  exports '${names}', wanted 'main'")
endif()
