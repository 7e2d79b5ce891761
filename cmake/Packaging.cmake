# Debian packages: rtcm2 with the program and the libraries, rtcm2-dev with what programs are built
# against. scripts/package makes them from the release build.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME rtcm2)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "the rtcm2 authors <rtcm2@users.noreply.example.org>" CACHE STRING
  "Maintainer of the packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/DebianLayout.cmake)
set(CPACK_RTCM2_CHANGELOG ${PROJECT_SOURCE_DIR}/CHANGELOG.md)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME rtcm2)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION science)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"The program rtcm2 shows, filters, exports and encodes the messages of
differential GNSS reference stations, from captures in several forms. The
libraries decode messages in other programs.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
# The packages' own libraries, which are not installed yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  ${PROJECT_BINARY_DIR}/codec ${PROJECT_BINARY_DIR}/plugin ${PROJECT_BINARY_DIR}/host/support
  ${PROJECT_BINARY_DIR}/host/framework ${PROJECT_BINARY_DIR}/host/receiver)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME rtcm2-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"Headers and package configuration for programs that decode messages with the
codec, in C or C++, or through the plug-in and the host's framework, with Qt.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "rtcm2 (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS qt6-base-dev)

foreach(component runtime development)
  string(TOUPPER ${component} upper)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE COMPONENT ${component} EXCLUDE_FROM_ALL RENAME copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
endforeach()
include(CPack)
