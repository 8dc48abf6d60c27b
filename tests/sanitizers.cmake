# The C++ tests again in a build that Clang's address and undefined-behaviour sanitizers watch, and the fuzz
# targets there. It is made while other tests run. A program runs in one go: a process a test would take too long.
set(sanitizers PROPERTIES LABELS sanitizers TIMEOUT 1500)
add_test(NAME sanitizers.build COMMAND ${PROJECT_SOURCE_DIR}/tools/build sanitize ${programs} fuzz)
set_tests_properties(sanitizers.build ${sanitizers} FIXTURES_SETUP sanitizers PROCESSORS 2 COST 1000)

foreach(program IN LISTS programs)
  get_target_property(folder ${program} BINARY_DIR)
  cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_BINARY_DIR})
  add_test(NAME sanitizers.${program}
    COMMAND ${PROJECT_SOURCE_DIR}/build/sanitize/${folder}/${program} --gtest_brief=1)
  # Without strict_string_checks, which the system's keyboard library does not pass.
  set_tests_properties(sanitizers.${program} ${sanitizers} FIXTURES_REQUIRED sanitizers
    ENVIRONMENT "ASAN_OPTIONS=detect_stack_use_after_return=1;UBSAN_OPTIONS=print_stacktrace=1")
endforeach()

add_test(NAME fuzz_targets COMMAND ${PROJECT_SOURCE_DIR}/tools/build sanitize fuzz_briefly)
set_tests_properties(fuzz_targets ${sanitizers} FIXTURES_REQUIRED sanitizers PROCESSORS 2)
