# Tests that need the codec and the framing alone.
rtcm2_add_test(quarn_test SOURCES quarn_test.cpp LIBS quarn)
foreach(subject vectors entry records format)
  rtcm2_add_test(codec_${subject}_test SOURCES codec_${subject}_test.cpp LIBS rtcm2_codec_static)
endforeach()
target_compile_definitions(codec_vectors_test
  PRIVATE RTCM2_TEST_VECTORS="${CMAKE_CURRENT_SOURCE_DIR}/vectors/codec.txt")
target_link_options(codec_records_test PRIVATE -Wl,--wrap=malloc -Wl,--wrap=realloc)
# What the library shows, and the rules behind it
rtcm2_add_test(framing_test
  SOURCES framing_test.cpp support/SlowFramer.cpp support/StreamBuilder.cpp LIBS rtcm2_framing_static)

# Any number of threads may use the codec, because it has no data that could change.
if(NOT RTCM2_SANITIZE)
  add_test(NAME codec_constant_test COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/codec_constant_test.sh
    ${CMAKE_OBJDUMP} $<TARGET_FILE:rtcm2_codec_static>)
endif()

# Forms of input and output, and their C interface
rtcm2_add_test(app_input_test
  SOURCES app_input_test.cpp support/StreamBuilder.cpp LIBS rtcm2::forms)

# The installation, used by programs that know nothing else
if(NOT RTCM2_SANITIZE AND NOT CMAKE_CROSSCOMPILING)
  add_test(NAME outside_test COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/outside/run.sh ${PROJECT_BINARY_DIR}
    $<IF:$<BOOL:${RTCM2_CODEC_ONLY}>,codec,all>)
endif()

# The generator: wrong schemas, the message reference, and what a change renders anew
if(CMAKE_CROSSCOMPILING OR NOT RENDER_PYTHON)
  return()
endif()
foreach(subject schema reference)
  add_test(NAME generator_${subject}_test
    COMMAND ${RENDER_PYTHON} -B ${CMAKE_CURRENT_SOURCE_DIR}/generator/${subject}_test.py)
endforeach()
add_test(NAME generator_build_test
  COMMAND ${RENDER_PYTHON} -B ${CMAKE_CURRENT_SOURCE_DIR}/generator/build_test.py ${CMAKE_COMMAND})
