# Renders the code that follows from schema/. Sets RENDERED_DIR, with a folder for the codec and one for
# the plug-in, and RENDERED_FILES, and makes the target rtcm2_render. The command runs again when a
# schema file, a template or a module of the generator changes; a file whose text stays the same keeps
# its time stamp, so that nothing that depends on it is built again.
#
# A source package has the rendered files in rendered/, with the sums of what they were rendered from.
# As long as that is what is here, they are taken as they are and no Python is needed.
include(FindRenderPython)

set(RENDER_SCRIPT ${PROJECT_SOURCE_DIR}/generator/render.py)
set(RENDER_SCHEMA ${PROJECT_SOURCE_DIR}/schema)
file(GLOB RENDER_INPUTS CONFIGURE_DEPENDS
     ${RENDER_SCHEMA}/*.yaml ${PROJECT_SOURCE_DIR}/generator/*.py
     ${PROJECT_SOURCE_DIR}/generator/templates/*.j2)
# The list of files follows from the schema and the generator, so they are inputs of the
# configuration too.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${RENDER_INPUTS})

set(RENDERED_DIR ${PROJECT_SOURCE_DIR}/rendered)
set(sums "")
foreach(input IN LISTS RENDER_INPUTS)
  file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${input})
  file(SHA256 ${input} sum)
  list(APPEND sums "${sum}  ${name}")
endforeach()
set(known "")
if(EXISTS ${RENDERED_DIR}/inputs.sha256)
  file(STRINGS ${RENDERED_DIR}/inputs.sha256 known)
endif()
list(SORT sums)
list(SORT known)
if(sums STREQUAL known)
  file(GLOB RENDERED_FILES ${RENDERED_DIR}/*/*)
  add_custom_target(rtcm2_render)
  return()
endif()

if(NOT RENDER_PYTHON)
  message(FATAL_ERROR "No python3 with the modules jinja2 and yaml was found. On Debian: "
                      "apt-get install python3 python3-jinja2 python3-yaml")
endif()
set(RENDERED_DIR ${PROJECT_BINARY_DIR}/rendered)
execute_process(COMMAND ${RENDER_PYTHON} -B ${RENDER_SCRIPT} --schema ${RENDER_SCHEMA} --list
                OUTPUT_VARIABLE names RESULT_VARIABLE failed OUTPUT_STRIP_TRAILING_WHITESPACE)
if(failed)
  message(FATAL_ERROR "The schema could not be read.")
endif()
string(REPLACE "\n" ";" names "${names}")
list(TRANSFORM names PREPEND ${RENDERED_DIR}/ OUTPUT_VARIABLE RENDERED_FILES)

add_custom_command(
  OUTPUT ${RENDERED_DIR}/rendered.stamp
  BYPRODUCTS ${RENDERED_FILES}
  COMMAND ${RENDER_PYTHON} -B ${RENDER_SCRIPT} --schema ${RENDER_SCHEMA} --out ${RENDERED_DIR}
  COMMAND ${CMAKE_COMMAND} -E touch ${RENDERED_DIR}/rendered.stamp
  DEPENDS ${RENDER_INPUTS}
  COMMENT "Rendering the code that follows from schema/"
  VERBATIM)
add_custom_target(rtcm2_render DEPENDS ${RENDERED_DIR}/rendered.stamp)
