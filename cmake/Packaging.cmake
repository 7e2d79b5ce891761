# Debian packages: the codec, the plug-in with the host's libraries, the program, the viewer, and for
# each library what programs are built with. Only the plug-in's need Qt. scripts/package makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME rtcm2)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")    # each package has its own
set(CPACK_PACKAGE_CONTACT "the rtcm2 authors <rtcm2@users.noreply.example.org>" CACHE STRING
  "Maintainer of the packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 0upstream1)    # Debian's own would begin with 1 and be newer
set(CPACK_DEBIAN_PACKAGE_SOURCE rtcm2)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# The packages' own libraries, which are not installed yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  ${PROJECT_BINARY_DIR}/codec ${PROJECT_BINARY_DIR}/framing ${PROJECT_BINARY_DIR}/plugin ${PROJECT_BINARY_DIR}/host/support
  ${PROJECT_BINARY_DIR}/host/framework ${PROJECT_BINARY_DIR}/host/receiver)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/DebianLayout.cmake)
set(CPACK_RTCM2_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_RTCM2_STRIP ${CMAKE_STRIP})

# rtcm2_package(<component> <package> <section> <description, its first line the summary>
#               [DEPENDS <package>...])
macro(rtcm2_package component package section description)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  list(JOIN ARG_DEPENDS ", " ARG_DEPENDS)
  string(TOUPPER ${component} upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${description}")
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${ARG_DEPENDS}")
  if(NOT ${component} MATCHES "development")
    set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ON)
  endif()
endmacro()

set(codec librtcm2-codec${RTCM2_SOVERSION})
set(plugin libvorlo-rtcm2-${RTCM2_SOVERSION})
set(same "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(later "(>= ${PROJECT_VERSION})")
rtcm2_package(codec ${codec} libs
"RTCM 2.x messages to plain records and back
The libraries decode and encode the messages of differential GNSS reference
stations and find them in streams and in files of other forms, from C, C++ and
whatever calls C.")
rtcm2_package(codec_development librtcm2-dev libdevel
"RTCM 2.x messages to plain records and back, development files
Headers, the static libraries, package configuration for CMake and pkg-config,
documentation and an example."
  DEPENDS "${codec} ${same}")
rtcm2_package(plugin ${plugin} libs
"RTCM 2.x decoding plug-in and its framework
The plug-in presents the messages of differential GNSS reference stations as
objects that describe themselves to a host. The libraries of its framework,
which change only together with it, are here too."
  DEPENDS "${codec} ${later}")
rtcm2_package(plugin_development libvorlo-rtcm2-dev libdevel
"RTCM 2.x decoding plug-in and its framework, development files
Headers, package configuration for CMake and an example of a host."
  DEPENDS "${plugin} ${same}" "librtcm2-dev ${same}" "qt${QT_DEFAULT_MAJOR_VERSION}-base-dev")
rtcm2_package(program rtcm2 science
"shows, filters, exports and encodes RTCM 2.x messages
The program reads captures of differential GNSS reference stations in several
forms, and writes them as text, JSON, CSV or captures."
  DEPENDS "${codec} ${later}" "${plugin} ${later}")
if(TARGET rtcm2-view)
  rtcm2_package(viewer rtcm2-view science
"shows RTCM 2.x messages in a window
The viewer lists the messages of captures and live streams of differential GNSS
reference stations, also while they are read, and shows the fields and bits of
each."
    DEPENDS "${codec} ${later}" "${plugin} ${later}" qt6-qpa-plugins)
endif()
if(QT_DEFAULT_MAJOR_VERSION EQUAL 5)
  string(REPLACE qt5-base-dev qtbase5-dev
    CPACK_DEBIAN_PLUGIN_DEVELOPMENT_PACKAGE_DEPENDS "${CPACK_DEBIAN_PLUGIN_DEVELOPMENT_PACKAGE_DEPENDS}")
endif()

file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
foreach(library CODEC PLUGIN)
  set(CPACK_DEBIAN_${library}_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
endforeach()
include(CPack)
