# What takes long and needs no desktop of its own: ./test --long [NAME]. Each builds what it needs.
add_test(NAME fuzz CONFIGURATIONS long COMMAND ${PROJECT_SOURCE_DIR}/fuzz/run 600)
set_tests_properties(fuzz PROPERTIES LABELS long TIMEOUT 3600)
