# Programs outside find the libraries as rtcm2::codec, rtcm2::plugin, rtcm2::framework, ...; the same
# names work within the project.
#
#   rtcm2_install_library(<target> <name> EXPORT <group> COMPONENT <component> INCLUDE_DIR <dir>
#                         [HEADERS <file>...] [HEADER_DIR <dir>])
#
# INCLUDE_DIR is below the include directory of the installation; HEADER_DIR installs all headers of
# a directory. A group is what rtcm2Config.cmake loads at once. Components are codec, plugin and
# program; what programs are built with goes to <component>_development.

# While the major version is 0, a minor version may change the binary interface.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(RTCM2_SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
  set(RTCM2_SOVERSION ${PROJECT_VERSION_MAJOR})
endif()

set(RTCM2_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/rtcm2)

function(rtcm2_install_library target name)
  cmake_parse_arguments(ARG "" "EXPORT;COMPONENT;INCLUDE_DIR;HEADER_DIR" "HEADERS" ${ARGN})
  set(include_dir ${CMAKE_INSTALL_INCLUDEDIR}/${ARG_INCLUDE_DIR})
  set(development ${ARG_COMPONENT}_development)
  add_library(rtcm2::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${name} VERSION ${PROJECT_VERSION} SOVERSION ${RTCM2_SOVERSION}
    INSTALL_RPATH "$ORIGIN")
  if(NOT RTCM2_INSTALL)
    return()
  endif()
  install(TARGETS ${target} EXPORT rtcm2-${ARG_EXPORT}
    LIBRARY COMPONENT ${ARG_COMPONENT} NAMELINK_COMPONENT ${development}
    ARCHIVE COMPONENT ${development}
    INCLUDES DESTINATION ${include_dir})
  install(FILES ${ARG_HEADERS} DESTINATION ${include_dir} COMPONENT ${development})
  if(ARG_HEADER_DIR)
    install(DIRECTORY ${ARG_HEADER_DIR}/ DESTINATION ${include_dir} COMPONENT ${development}
      FILES_MATCHING PATTERN "*.h")
  endif()
endfunction()
