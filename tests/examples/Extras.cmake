# The process under test: built with the examples. Wine shows the root of the file system as drive Z.
if(TARGET settings_host)
  add_dependencies(test_examples settings_host)
  target_compile_definitions(test_examples PRIVATE
    SETTINGS_HOST="$<$<BOOL:${WIN32}>:Z:>$<TARGET_FILE:settings_host>"
    SETTINGS_INI="$<$<BOOL:${WIN32}>:Z:>${PROJECT_SOURCE_DIR}/examples/settings_host/settings.ini")
else()
  set_target_properties(test_examples PROPERTIES EXCLUDE_FROM_ALL ON)
  set_tests_properties(examples PROPERTIES DISABLED ON)
endif()
