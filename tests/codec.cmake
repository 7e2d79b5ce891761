# Tests that need the codec and the framing alone.
rtcm2_add_test(quarn_test SOURCES quarn_test.cpp LIBS quarn)
add_library(codec_test_support STATIC support/CodecKinds.cpp support/CodecVectors.cpp)
target_link_libraries(codec_test_support PUBLIC rtcm2_codec_static PRIVATE rtcm2_project_options)
target_include_directories(codec_test_support PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_compile_definitions(codec_test_support
  PRIVATE RTCM2_TEST_VECTORS="${CMAKE_CURRENT_SOURCE_DIR}/vectors/codec.txt")
set(subjects vectors entry records format memory)
if(NOT CMAKE_CROSSCOMPILING)    # an emulator takes minutes for these
  list(APPEND subjects threads)
endif()
foreach(subject IN LISTS subjects)
  rtcm2_add_test(codec_${subject}_test SOURCES codec_${subject}_test.cpp LIBS codec_test_support)
endforeach()
target_link_options(codec_memory_test PRIVATE -Wl,--wrap=malloc -Wl,--wrap=realloc)
# What the library shows, and the rules behind it
rtcm2_add_test(framing_test
  SOURCES framing_test.cpp support/SlowFramer.cpp support/StreamBuilder.cpp LIBS rtcm2_framing_static)
if(VALGRIND)
  add_test(NAME codec_threads_valgrind_test
    COMMAND ${VALGRIND} --tool=helgrind --quiet --error-exitcode=1 $<TARGET_FILE:codec_threads_test>)
endif()

# Forms of input and output, and their C interface
rtcm2_add_test(app_input_test
  SOURCES app_input_test.cpp support/StreamBuilder.cpp LIBS rtcm2::forms)

# The installation, used by programs that know nothing else
if(NOT RTCM2_SANITIZE AND NOT CMAKE_CROSSCOMPILING)
  add_test(NAME outside_test COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/outside/run.sh ${PROJECT_BINARY_DIR}
    $<IF:$<BOOL:${RTCM2_CODEC_ONLY}>,codec,all>)
endif()

# The generator: wrong schemas, goldens and the message reference, and what a change renders anew
if(CMAKE_CROSSCOMPILING OR NOT RENDER_PYTHON)
  return()
endif()
add_test(NAME generator_schema_test
  COMMAND ${RENDER_PYTHON} -B ${CMAKE_CURRENT_SOURCE_DIR}/generator/schema_test.py)
add_test(NAME generator_golden_test
  COMMAND ${RENDER_PYTHON} -B ${CMAKE_CURRENT_SOURCE_DIR}/generator/golden_test.py)
add_test(NAME generator_build_test
  COMMAND ${RENDER_PYTHON} -B ${CMAKE_CURRENT_SOURCE_DIR}/generator/build_test.py ${CMAKE_COMMAND})
