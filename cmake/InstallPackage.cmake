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

# What pkg-config tells. Paths are relative to the place of the file itself, so that the installation
# can be moved. Programs find the library where it is, unless that is where the system looks anyway,
# which is certain only when it is installed.
file(RELATIVE_PATH PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" PC_PREFIX "${PC_PREFIX}")
set(rpath "-Wl,-rpath,\${libdir} ")
if(CMAKE_SKIP_INSTALL_RPATH OR NOT BUILD_SHARED_LIBS)
  set(rpath "")
endif()
# The static form needs the C++ library, also in a program in C.
set(PC_RUNTIME ${CMAKE_CXX_IMPLICIT_LINK_LIBRARIES})
list(REMOVE_ITEM PC_RUNTIME ${CMAKE_C_IMPLICIT_LINK_LIBRARIES})
list(TRANSFORM PC_RUNTIME PREPEND " -l")
string(CONCAT PC_RUNTIME ${PC_RUNTIME})
if(BUILD_SHARED_LIBS)
  string(PREPEND PC_RUNTIME "\nLibs.private:")
endif()
set(PC_RPATH "@PC_RPATH@")    # stays as it is until then
function(rtcm2_install_pc PC_NAME PC_DESCRIPTION)
  set(pc ${PROJECT_BINARY_DIR}/rtcm2-${PC_NAME}.pc)
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/rtcm2.pc.in ${pc}.in @ONLY)
  install(CODE "set(PC_RPATH [[${rpath}]])
    if(CMAKE_INSTALL_PREFIX MATCHES \"^/(usr)?/?$\")
      set(PC_RPATH)
    endif()
    configure_file([[${pc}.in]] [[${pc}]] @ONLY)" COMPONENT codec_development)
  install(FILES ${pc} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT codec_development)
endfunction()
rtcm2_install_pc(codec "RTCM 2.x messages to plain records and back")
rtcm2_install_pc(framing "RTCM 2.x messages out of streams and back")
rtcm2_install_pc(forms "RTCM 2.x messages out of files of any form and back")

# What there is to read.
set(docs ${PROJECT_SOURCE_DIR}/docs)
foreach(page messages architecture security adding-a-kind)
  install(FILES ${docs}/${page}.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT codec_development)
endforeach()
install(FILES ${docs}/examples/decode.c ${docs}/examples/stream.c DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
  COMPONENT codec_development)
if(NOT RTCM2_CODEC_ONLY)
  install(FILES ${docs}/json.md ${docs}/sqlite.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
  install(FILES ${docs}/examples/host.cpp DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
    COMPONENT plugin_development)
endif()
