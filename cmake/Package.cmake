# "cpack" makes wren_<version>_<architecture>.deb from the installed files.

# No single address can answer for the packages of all builders: set your own when you give a package away.
set(WREN_MAINTAINER "The Wren and Declaration authors <wren@localhost.localdomain>"
    CACHE STRING "Who answers for the package: name and mail address")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME wren)
set(CPACK_PACKAGE_VENDOR "The Wren and Declaration authors")
set(CPACK_PACKAGE_CONTACT ${WREN_MAINTAINER})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/packaging/debian/tree.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/packaging/debian/without-scripts.cmake)
set(CPACK_WREN_CHANGELOG ${CMAKE_BINARY_DIR}/packaging/changelog)
configure_file(packaging/debian/changelog.in ${CPACK_WREN_CHANGELOG} @ONLY)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION editors)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# dpkg finds libraries by what the programs link. Universal Ctags is run, not linked.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS universal-ctags)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "symbol lookup and editor for C, C++ and Objective-C source
Wren looks up symbols in source code without a compiler database: point at a
name, and get its declaration or its definition. It reads two tags files, one
of a project and one of the system headers. Universal Ctags makes them.

The command line and its scripts need no display.")
if(WREN_DESKTOP)
    # The editor runs the first for trees with .editorconfig files; Qt uses the second on a Wayland display without X11.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "editorconfig, qt6-wayland")
    string(APPEND CPACK_DEBIAN_PACKAGE_DESCRIPTION " The editor lists the
completions of a name while it is typed, and a click goes to the declaration
of a symbol.")
endif()
include(CPack)
