# The Debian package: `cpack -G DEB` in the build folder, or tools/package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessary)
set(CPACK_PACKAGE_VENDOR "The Tessary authors")
set(CPACK_PACKAGE_CONTACT "The Tessary authors <authors@tessary.com>")
# With DESTDIR the prefix stays the final one while installing, which InstallForPrefix writes down.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

file(STRINGS debian/description description)
list(POP_FRONT description CPACK_PACKAGE_DESCRIPTION_SUMMARY)
list(TRANSFORM description REPLACE "^ \\.?" "")
list(JOIN description "\n" CPACK_DEBIAN_PACKAGE_DESCRIPTION)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries of the programs are added by this; not those of the module for reminders, which is opened only
# where the desktop has them.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/LibraryDependencies.cmake")
# Beyond the libraries: icons for our own and for other programs, Chinese letters, and the models without
# which no text is recognised for most. See also the group `run` of packages.list.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "hicolor-icon-theme, adwaita-icon-theme, fonts-droid-fallback | fonts-noto-cjk, \
qt6-translations-l10n, tesseract-ocr-chi-sim, tesseract-ocr-eng")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "default-dbus-session-bus | dbus-session-bus, tesseract-ocr-chi-tra, \
tesseract-ocr-jpn, evolution-data-server")

include(CPack)
