# Defects in the portable core, with the checks of .clang-tidy. A file is looked at again after it, a
# header of the core or the list of checks has changed.
find_program(CLANG_TIDY clang-tidy-16 REQUIRED)
file(GLOB headers CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/app/*.h ${PROJECT_SOURCE_DIR}/client/*.h ${PROJECT_SOURCE_DIR}/detect/*.h
  ${PROJECT_SOURCE_DIR}/model/*.h ${PROJECT_SOURCE_DIR}/outbox/*.h ${PROJECT_SOURCE_DIR}/platform/*.h
  ${PROJECT_SOURCE_DIR}/ui/*.h)
get_target_property(sources notewick_core SOURCES)
if(NOT sources)
  message(FATAL_ERROR "There is no source to look at.")
endif()
foreach(source IN LISTS sources ITEMS app/main.cpp)
  string(MAKE_C_IDENTIFIER ${source} name)
  set(looked_at ${CMAKE_CURRENT_BINARY_DIR}/lint_${name})
  add_custom_command(
    OUTPUT ${looked_at}
    COMMAND ${CLANG_TIDY} --quiet ${source} -- -std=c++20 -I.
    COMMAND ${CMAKE_COMMAND} -E touch ${looked_at}
    DEPENDS ${PROJECT_SOURCE_DIR}/${source} ${headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    VERBATIM)
  list(APPEND all_looked_at ${looked_at})
endforeach()
add_custom_target(lint DEPENDS ${all_looked_at})
add_test(NAME lint COMMAND ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target lint)
set_tests_properties(lint PROPERTIES PROCESSORS 2 TIMEOUT 600 RESOURCE_LOCK build)
