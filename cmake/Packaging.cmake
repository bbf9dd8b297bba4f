# Debian packages through CPack: a runtime package with the versioned shared library and
# a development package with the headers, the CMake package and tavrin.pc. The version
# comes from project() and appears in both file names.

set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "tavrin")
set(CPACK_PACKAGE_VENDOR "Tavrin developers")
set(CPACK_PACKAGE_CONTACT "Tavrin developers <tavrin@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
  "Video-analytics rule and calibration overlays drawn with OpenGL and edited with the mouse")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "libs")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "libtavrin${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION "libs")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME "libtavrin-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libtavrin${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Tavrin shared library")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Tavrin headers, CMake package and pkg-config file")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)

include(CPack)
