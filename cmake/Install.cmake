# What `cmake --install` puts where, relative to any prefix: the program finds its
# modules from its own place. Completion scripts and manual page are written by the
# program; under a cross compiler that has no emulator they are left out.

include(GNUInstallDirs)
set(ZEL_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING
    "Folder of the prefix for zsh's completion functions")

get_property(modules GLOBAL PROPERTY ZEL_MODULES)
install(TARGETS zelfx RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS ${modules} LIBRARY DESTINATION lib/zelfx/modules)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs samples DESTINATION ${CMAKE_INSTALL_DOCDIR})

if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
  return()
endif()

set(made ${CMAKE_BINARY_DIR}/manners)
file(MAKE_DIRECTORY ${made})
function(made_by_zelfx file)
  add_custom_command(OUTPUT ${made}/${file} COMMAND zelfx ${ARGN} > ${made}/${file}
                     DEPENDS zelfx VERBATIM)
endfunction()
made_by_zelfx(zelfx completion bash)
made_by_zelfx(_zelfx completion zsh)
made_by_zelfx(zelfx.1 man)
add_custom_target(zelfx_manners ALL DEPENDS ${made}/zelfx ${made}/_zelfx ${made}/zelfx.1)

install(FILES ${made}/zelfx DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${made}/_zelfx DESTINATION ${ZEL_ZSH_COMPLETIONS})
install(FILES ${made}/zelfx.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
