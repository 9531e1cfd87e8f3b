# Run by CPack on the files to be packed. -n: no time of day in the file.
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/zelfx.1)
if(NOT pages)
  message(FATAL_ERROR "the manual page is not in ${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
endif()
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9nf ${page} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
