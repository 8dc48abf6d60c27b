# Defects in the portable core, with the checks of .clang-tidy; a folder is looked at again after one of its
# files, a header of the core or the list of checks has changed.
find_program(CLANG_TIDY clang-tidy-16 REQUIRED)
get_target_property(sources notewick_core SOURCES)
if(NOT sources)
  message(FATAL_ERROR "There is no source to look at.")
endif()
foreach(source IN LISTS sources ITEMS app/main.cpp)
  cmake_path(GET source PARENT_PATH folder)
  list(APPEND folders ${folder})
  list(APPEND ${folder}_sources ${PROJECT_SOURCE_DIR}/${source})
endforeach()
list(REMOVE_DUPLICATES folders)
foreach(folder IN LISTS folders)
  file(GLOB some CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  list(APPEND headers ${some})
endforeach()

list(JOIN folders "|" folders_of_core)
foreach(folder IN LISTS folders)
  set(together ${CMAKE_CURRENT_BINARY_DIR}/lint/${folder}.cpp)
  write_together(${together} ${${folder}_sources})
  add_custom_command(
    OUTPUT ${together}.looked_at
    COMMAND ${CLANG_TIDY} --quiet --config-file=.clang-tidy "--header-filter=/(${folders_of_core})/[^/]*$"
      ${together} -- -std=c++20 -I.
    COMMAND ${CMAKE_COMMAND} -E touch ${together}.looked_at
    DEPENDS ${together} ${${folder}_sources} ${headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    VERBATIM)
  list(APPEND looked_at ${together}.looked_at)
endforeach()
add_custom_target(lint DEPENDS ${looked_at})
add_test(NAME lint COMMAND ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target lint)
set_tests_properties(lint PROPERTIES PROCESSORS 2 TIMEOUT 600 RESOURCE_LOCK build)
