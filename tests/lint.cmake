# Defects in the portable core, with the checks of .clang-tidy. Files are looked at again after one of them,
# a header of the core or the list of checks has changed.
find_program(CLANG_TIDY clang-tidy-16 REQUIRED)
file(GLOB headers CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/app/*.h ${PROJECT_SOURCE_DIR}/client/*.h ${PROJECT_SOURCE_DIR}/detect/*.h
  ${PROJECT_SOURCE_DIR}/model/*.h ${PROJECT_SOURCE_DIR}/outbox/*.h ${PROJECT_SOURCE_DIR}/platform/*.h
  ${PROJECT_SOURCE_DIR}/ui/*.h)
get_target_property(sources notewick_core SOURCES)
if(NOT sources)
  message(FATAL_ERROR "There is no source to look at.")
endif()
list(APPEND sources app/main.cpp)
# Several files are looked at as one, because reading the headers of libraries takes most of the time.
set(at_once 8)
list(LENGTH sources count)
math(EXPR last "${count} - 1")
foreach(begin RANGE 0 ${last} ${at_once})
  list(SUBLIST sources ${begin} ${at_once} some)
  list(GET some 0 first)
  string(MAKE_C_IDENTIFIER ${first} name)
  set(look_at ${CMAKE_CURRENT_BINARY_DIR}/lint/${name}.cpp)
  list(TRANSFORM some REPLACE "(.+)" "#include \"\\1\"\n" OUTPUT_VARIABLE includes)
  list(JOIN includes "" includes)
  file(CONFIGURE OUTPUT ${look_at} CONTENT "${includes}" @ONLY)
  list(TRANSFORM some PREPEND ${PROJECT_SOURCE_DIR}/)
  add_custom_command(
    OUTPUT ${look_at}.done
    COMMAND ${CLANG_TIDY} --quiet --config-file=.clang-tidy --checks=-bugprone-suspicious-include
      ${look_at} -- -std=c++20 -I.
    COMMAND ${CMAKE_COMMAND} -E touch ${look_at}.done
    DEPENDS ${look_at} ${some} ${headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    VERBATIM)
  list(APPEND all_looked_at ${look_at}.done)
endforeach()
add_custom_target(lint DEPENDS ${all_looked_at})
add_test(NAME lint COMMAND ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target lint)
set_tests_properties(lint PROPERTIES PROCESSORS 2 TIMEOUT 600 RESOURCE_LOCK build)
