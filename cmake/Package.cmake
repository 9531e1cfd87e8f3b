# A Debian package of what Install.cmake installs: `cpack --preset package`, or
# tools/check-package.sh, which also installs it on a bare system.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zelfx)
set(CPACK_PACKAGE_VENDOR "zelfx")
set(CPACK_PACKAGE_CONTACT "The zelfx developers <zelfx@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "colour-correction effects without an editor")
set(CPACK_PACKAGE_DESCRIPTION
"Takes pictures, sequences and videos through the colour-correction effects that
editors load, exact to the bit: colour balance, brightness and contrast, gamma
and gain, film logarithm. Looks are saved as presets, seen as curves, and handed
to other programs as tables.")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS ffmpeg)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# Only the package has its manual compressed, as Debian wants it.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/CompressManual.cmake)

include(CPack)
