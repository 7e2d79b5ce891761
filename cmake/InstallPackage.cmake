# What find_package(rtcm2) and pkg-config need, beside the libraries themselves.
include(CMakePackageConfigHelpers)

function(rtcm2_install_group group component)
  install(EXPORT rtcm2-${group} NAMESPACE rtcm2:: DESTINATION ${RTCM2_CMAKE_DIR}
    FILE rtcm2-${group}.cmake COMPONENT ${component}_development)
endfunction()
rtcm2_install_group(codec codec)
if(NOT RTCM2_CODEC_ONLY)
  rtcm2_install_group(host plugin)
  rtcm2_install_group(plugin plugin)
endif()

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
  DESTINATION ${RTCM2_CMAKE_DIR} COMPONENT codec_development)

# Relative to the place of the file itself, so that the installation can be moved.
file(RELATIVE_PATH PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" PC_PREFIX "${PC_PREFIX}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/rtcm2-codec.pc.in ${PROJECT_BINARY_DIR}/rtcm2-codec.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/rtcm2-codec.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT codec_development)
