# cmake -DFILES=<modules> -DWRESTOOL=<wrestool> -DFOLDER=<folder> -P extract.cmake
#
# Takes the property list and the version out of each module, into FOLDER/<name>.pipl and
# .version.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
foreach(file IN LISTS FILES)
  get_filename_component(name ${file} NAME_WE)
  foreach(type PIPL 16)  # the resource compiler writes names in capitals
    set(id 16000)
    set(to ${FOLDER}/${name}.pipl)
    if(type EQUAL 16)
      set(id 1)
      set(to ${FOLDER}/${name}.version)
    endif()
    execute_process(COMMAND ${WRESTOOL} --raw -x -t ${type} -n ${id} -o ${to} ${file}
                    COMMAND_ERROR_IS_FATAL ANY)
    if(NOT EXISTS ${to})
      message(FATAL_ERROR "${file} has no resource ${type} ${id}")
    endif()
  endforeach()
endforeach()
