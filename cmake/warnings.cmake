# What every target of the project is compiled with. Linked privately, so that it reaches no one else.
option(NOTEWICK_WERROR "Treat warnings as errors" OFF)
set(NOTEWICK_SANITIZE "" CACHE STRING "Sanitizers, separated by commas")
option(NOTEWICK_FUZZ "Build the fuzz targets, and count for them what the product executes; needs Clang" OFF)
option(NOTEWICK_COVERAGE "Count executed lines" OFF)

add_library(notewick_options INTERFACE)
target_compile_features(notewick_options INTERFACE cxx_std_20)
target_include_directories(notewick_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(notewick_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  -Wnon-virtual-dtor -Woverloaded-virtual $<$<BOOL:${NOTEWICK_WERROR}>:-Werror>)
if(NOTEWICK_SANITIZE)
  target_compile_options(notewick_options INTERFACE -fsanitize=${NOTEWICK_SANITIZE}
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(notewick_options INTERFACE -fsanitize=${NOTEWICK_SANITIZE})
endif()
if(NOTEWICK_FUZZ)
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fsanitize=fuzzer-no-link>)
endif()
if(NOTEWICK_COVERAGE)
  target_compile_options(notewick_options INTERFACE --coverage)
  target_link_options(notewick_options INTERFACE --coverage)
endif()
