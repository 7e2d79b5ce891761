# Compiler settings that every target of the project links privately.
add_library(rtcm2_project_options INTERFACE)
# A newer standard that was chosen for the whole build stays.
target_compile_features(rtcm2_project_options INTERFACE cxx_std_20 c_std_99)
target_compile_options(rtcm2_project_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<BOOL:${RTCM2_WERROR}>:-Werror>
  # Libraries call their own functions directly, and those of others by one jump.
  -fno-semantic-interposition -fno-plt
  # Unique symbols would keep a library loaded, and its singletons alive, after it has been closed.
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
target_compile_definitions(rtcm2_project_options INTERFACE QT_NO_KEYWORDS)

if(RTCM2_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # A C program gets what the libraries' checks of C++ need.
  add_link_options($<$<LINK_LANG_AND_ID:C,Clang>:-fsanitize-link-c++-runtime> $<$<LINK_LANG_AND_ID:C,Clang>:-lstdc++>)
endif()
if(RTCM2_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
