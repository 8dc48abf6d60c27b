# What takes long and needs no desktop of its own: ./test --long [NAME]. Each builds what it needs.
add_test(NAME fuzz CONFIGURATIONS long COMMAND ${PROJECT_SOURCE_DIR}/fuzz/run 600)
add_test(NAME thread_sanitizer CONFIGURATIONS long
  COMMAND ${PROJECT_SOURCE_DIR}/tools/build thread run_portable_tests)
add_test(NAME desktop_sanitizers CONFIGURATIONS long
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/desktop/sanitized)
set_tests_properties(fuzz thread_sanitizer desktop_sanitizers PROPERTIES LABELS long TIMEOUT 3600)
