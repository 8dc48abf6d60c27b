# The implementations of the ports for macOS, named once: a Mac compiles them, every other machine checks
# their types. The composition root, which knows them all, is compiled into the program.
set(NOTEWICK_MACOS_COMPOSITION ${CMAKE_CURRENT_LIST_DIR}/composition.mm)
set(NOTEWICK_MACOS_SOURCES
  accessibility.mm
  application.mm
  clock.mm
  http_session.mm
  main_loop.mm
  notifier.mm
  process_launcher.mm
  quick_note_panel.mm
  screen.mm
  secret_store.mm
  sign_in_panel.mm
  status_item.mm
  user_defaults.mm
  uuid_source.mm
  views.mm
  workspace.mm
  bridge/run_loop_timer.mm
  bridge/text.mm
  controls/chooser.mm
  controls/controls.mm
  http/http_answers.mm
  panels/borrowed_keyboard.mm
  panels/caught_list.mm
  panels/floating_panel.mm
  panels/note_window.mm
  panels/window_drag.mm
  session/single_instance.mm
  session/termination_signals.mm
  tray/menu_renderer.mm)
list(TRANSFORM NOTEWICK_MACOS_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/)

file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.mm)
foreach(source IN LISTS found)
  if(NOT source IN_LIST NOTEWICK_MACOS_SOURCES AND NOT source STREQUAL NOTEWICK_MACOS_COMPOSITION)
    message(FATAL_ERROR "${source} is not in the list of the implementations for macOS")
  endif()
endforeach()
