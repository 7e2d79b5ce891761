# What find_package(rtcm2) and pkg-config need, beside the libraries themselves.
include(CMakePackageConfigHelpers)

foreach(group codec host plugin)
  install(EXPORT rtcm2-${group} NAMESPACE rtcm2:: DESTINATION ${RTCM2_CMAKE_DIR}
    FILE rtcm2-${group}.cmake COMPONENT development)
endforeach()

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/rtcm2Config.cmake.in
  ${PROJECT_BINARY_DIR}/rtcm2Config.cmake INSTALL_DESTINATION ${RTCM2_CMAKE_DIR}
  NO_SET_AND_CHECK_MACRO)
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatible SameMinorVersion)
else()
  set(compatible SameMajorVersion)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/rtcm2ConfigVersion.cmake
  COMPATIBILITY ${compatible})
install(FILES ${PROJECT_BINARY_DIR}/rtcm2Config.cmake ${PROJECT_BINARY_DIR}/rtcm2ConfigVersion.cmake
  DESTINATION ${RTCM2_CMAKE_DIR} COMPONENT development)

# What pkg-config tells. Paths are relative to the place of the file itself, so that the installation
# can be moved. Programs find the library where it is, unless that is where the system looks anyway,
# which is certain only when it is installed.
file(RELATIVE_PATH PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" PC_PREFIX "${PC_PREFIX}")
set(PC_RPATH "-Wl,-rpath,\${libdir} ")
if(CMAKE_SKIP_INSTALL_RPATH OR NOT BUILD_SHARED_LIBS)
  set(PC_RPATH "")
endif()
# The static form needs the C++ library, also in a program in C.
set(runtime ${CMAKE_CXX_IMPLICIT_LINK_LIBRARIES})
list(REMOVE_ITEM runtime ${CMAKE_C_IMPLICIT_LINK_LIBRARIES})
list(TRANSFORM runtime PREPEND " -l")
string(CONCAT PC_RUNTIME ${runtime})
if(BUILD_SHARED_LIBS)
  string(PREPEND PC_RUNTIME "\nLibs.private:")
endif()
set(pc ${PROJECT_BINARY_DIR}/rtcm2-codec.pc)
configure_file(${CMAKE_CURRENT_LIST_DIR}/rtcm2-codec.pc.in ${pc}.in @ONLY)
install(CODE "set(PC_RPATH [[${PC_RPATH}]])
  if(CMAKE_INSTALL_PREFIX MATCHES \"^/(usr)?/?$\")
    set(PC_RPATH)
  endif()
  configure_file(${pc}.in ${pc} @ONLY)" COMPONENT codec_development)
install(FILES ${pc} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT codec_development)
