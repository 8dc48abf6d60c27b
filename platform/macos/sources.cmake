# The bodies of the ports for macOS, named once: a Mac compiles them, every other machine checks
# their types. The composition root, which knows them all, is compiled into the program.
set(NOTEWICK_MACOS_COMPOSITION ${CMAKE_CURRENT_LIST_DIR}/composition.mm)
set(NOTEWICK_MACOS_SOURCES
  accessibility.mm
  application.mm
  borrowed_keyboard.mm
  caught_list.mm
  chooser.mm
  clock.mm
  controls.mm
  floating_panel.mm
  http_answers.mm
  http_session.mm
  main_loop.mm
  menu_renderer.mm
  note_window.mm
  notifier.mm
  process_launcher.mm
  quick_note_panel.mm
  screen.mm
  secret_store.mm
  sign_in_panel.mm
  single_instance.mm
  status_item.mm
  text.mm
  user_defaults.mm
  uuid_source.mm
  views.mm
  window_drag.mm
  workspace.mm)
list(TRANSFORM NOTEWICK_MACOS_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/)

file(GLOB found CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.mm)
foreach(source IN LISTS found)
  if(NOT source IN_LIST NOTEWICK_MACOS_SOURCES AND NOT source STREQUAL NOTEWICK_MACOS_COMPOSITION)
    message(FATAL_ERROR "${source} is not in the list of the bodies for macOS")
  endif()
endforeach()
