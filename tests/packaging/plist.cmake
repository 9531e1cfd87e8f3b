# cmake -DRESOURCES=<zel_resources> [-DEMULATOR=<command>] -DFOLDER=<folder> -P plist.cmake
#
# Writes the files of a bundle for every module; passes when plistutil and xmllint read
# the property list, PkgInfo has its eight bytes, and the resource file is there.
find_program(PLISTUTIL plistutil)
find_program(XMLLINT xmllint)
if(NOT PLISTUTIL AND NOT XMLLINT)
  message(FATAL_ERROR "neither plistutil nor xmllint is here")
endif()
foreach(name color_balance brightness_contrast_pivot gamma_gain_offset log_linear_conversion)
  set(to ${FOLDER}/zel_${name}.plugin/Contents)
  file(REMOVE_RECURSE ${to})
  execute_process(COMMAND ${EMULATOR} ${RESOURCES} mac64 zel_${name} ${to}
                  COMMAND_ERROR_IS_FATAL ANY)
  if(PLISTUTIL)
    # Into the binary form and back: what it has read comes out again.
    execute_process(COMMAND ${PLISTUTIL} -i ${to}/Info.plist -o ${FOLDER}/binary.plist
                    COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND ${PLISTUTIL} -i ${FOLDER}/binary.plist OUTPUT_VARIABLE text
                    COMMAND_ERROR_IS_FATAL ANY)
    if(NOT text MATCHES "<key>CFBundleExecutable</key>[ \t\n]*<string>zel_${name}</string>")
      message(FATAL_ERROR "${to}/Info.plist names another program:\n${text}")
    endif()
  endif()
  if(XMLLINT)
    execute_process(COMMAND ${XMLLINT} --nonet --noout ${to}/Info.plist
                    COMMAND_ERROR_IS_FATAL ANY)
  endif()
  file(READ ${to}/PkgInfo info)
  if(NOT info STREQUAL "eFKTFXTC")
    message(FATAL_ERROR "${to}/PkgInfo says '${info}'")
  endif()
  if(NOT EXISTS ${to}/Resources/zel_${name}.rsrc)
    message(FATAL_ERROR "${to}/Resources has no zel_${name}.rsrc")
  endif()
endforeach()
# The check itself: what is no property list must not pass.
file(WRITE ${FOLDER}/broken.plist "<plist><dict>")
if(XMLLINT)
  execute_process(COMMAND ${XMLLINT} --noout ${FOLDER}/broken.plist RESULT_VARIABLE result
                  ERROR_QUIET)
else()
  execute_process(COMMAND ${PLISTUTIL} -i ${FOLDER}/broken.plist RESULT_VARIABLE result
                  OUTPUT_QUIET ERROR_QUIET)
endif()
if(result EQUAL 0)
  message(FATAL_ERROR "a broken property list passes")
endif()
