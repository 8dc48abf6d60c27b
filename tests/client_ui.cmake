# The service client, the outbox and the user interface, on the fakes.
notewick_test(client_ui_tests
  SOURCES
    client/answer_body_test.cpp
    client/failure_text_test.cpp
    client/keychain_test.cpp
    client/lanes_test.cpp
    client/uri_test.cpp
    client/velk_client_sign_in_test.cpp
    client/velk_client_test.cpp
    client/velk_error_test.cpp
    outbox/delayed_save_test.cpp
    outbox/delegate_outbox_test.cpp
    outbox/delegate_refresh_test.cpp
    platform/web_address_test.cpp
    ui/delegate_commands_test.cpp
    ui/delegate_login_store_test.cpp
    ui/delegate_login_test.cpp
    ui/delegate_menu_test.cpp
    ui/delegate_widget_test.cpp
    ui/login_controller_test.cpp
    ui/quick_widget_controller_test.cpp
    ui/start_at_login_test.cpp
    ui/status_menu_test.cpp
  LINK notewick_test_support)

# The whole program through one day of a caseworker, a month, and changes of the clock.
notewick_test(simulated_day
  SOURCES
    app/clock_changes_test.cpp
    app/month_test.cpp
    app/simulated_day_test.cpp
  LINK notewick_test_support)
