# Before a package is closed, what Debian has otherwise: documentation lies in a folder of the
# package's name and is compressed, with the copyright and the changelogs; zsh looks for completions
# elsewhere; a static library has no debug information.
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(entry "rtcm2 (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * See changelog.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${now}
")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(usr ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  set(doc ${usr}/share/doc/${package})
  if(EXISTS ${usr}/share/doc/rtcm2 AND NOT package STREQUAL "rtcm2")
    file(RENAME ${usr}/share/doc/rtcm2 ${doc})
  endif()
  configure_file(${CPACK_RTCM2_SOURCE_DIR}/LICENSE ${doc}/copyright COPYONLY)
  configure_file(${CPACK_RTCM2_SOURCE_DIR}/CHANGELOG.md ${doc}/changelog COPYONLY)
  file(WRITE ${doc}/changelog.Debian "${entry}")
  file(GLOB compressed ${usr}/share/man/man*/*.1 ${doc}/changelog*)
  execute_process(COMMAND gzip -9n ${compressed} COMMAND_ERROR_IS_FATAL ANY)
  if(EXISTS ${usr}/share/zsh/site-functions)
    file(RENAME ${usr}/share/zsh/site-functions ${usr}/share/zsh/vendor-completions)
  endif()
  file(GLOB_RECURSE archives ${usr}/lib/*.a)
  if(archives)
    execute_process(COMMAND ${CPACK_RTCM2_STRIP} --strip-debug --remove-section=.comment ${archives}
      COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
