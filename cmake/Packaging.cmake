# Debian packages through CPack: a runtime package with the versioned shared library and
# a development package with the headers, the CMake package and tavrin.pc. The version
# comes from project() and appears in both file names.

set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "tavrin${TAVRIN_NAME_SUFFIX}")
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

# The Qt 6 build's packages carry the "6" of its file names: libtavrin6-0, libtavrin6-dev.
if(TAVRIN_NAME_SUFFIX)
  set(TAVRIN_RUNTIME_PACKAGE "libtavrin${TAVRIN_NAME_SUFFIX}-${PROJECT_VERSION_MAJOR}")
else()
  set(TAVRIN_RUNTIME_PACKAGE "libtavrin${PROJECT_VERSION_MAJOR}")
endif()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${TAVRIN_RUNTIME_PACKAGE}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION "libs")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME "libtavrin${TAVRIN_NAME_SUFFIX}-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${TAVRIN_RUNTIME_PACKAGE} (= ${PROJECT_VERSION})")

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Tavrin shared libraries (Qt ${TAVRIN_QT_MAJOR} build)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Tavrin headers, CMake package and pkg-config file (Qt ${TAVRIN_QT_MAJOR} build)")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)

include(CPack)
