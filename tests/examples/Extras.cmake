# The processes under test: built with the examples. Wine shows the root of the file system as drive Z.
if(TARGET settings_host)
  set(drive "$<$<BOOL:${WIN32}>:Z:>")
  add_dependencies(test_examples settings_host monitor service)
  target_link_libraries(test_examples PRIVATE monitor_parts)
  kelgen_add_resources(test_examples "${PROJECT_SOURCE_DIR}/tests/examples/Monitor.rc"
    DEPENDS "${PROJECT_SOURCE_DIR}/examples/monitor/Monitor.rc" "${PROJECT_SOURCE_DIR}/examples/monitor/Resource.h")
  target_compile_definitions(test_examples PRIVATE
    SETTINGS_HOST="${drive}$<TARGET_FILE:settings_host>" MONITOR="${drive}$<TARGET_FILE:monitor>" SERVICE="${drive}$<TARGET_FILE:service>"
    SETTINGS_INI="${drive}${PROJECT_SOURCE_DIR}/examples/settings_host/settings.ini")
  if(WIN32)
    # Windows of other processes are seen there only.
    target_sources(test_examples PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/examples/MonitorPictureTest.cpp")
  else()
    add_dependencies(test_posix_examples monitor)
    target_link_libraries(test_posix_examples PRIVATE monitor_parts)
    # Milliseconds; sanitizers take their time.
    set(most_delay 100)
    if(KELGEN_SANITIZE)
      set(most_delay 1000)
    endif()
    target_compile_definitions(test_posix_examples PRIVATE
      MONITOR="$<TARGET_FILE:monitor>" MONITOR_MOST_DELAY=${most_delay})
  endif()
else()
  set_target_properties(test_examples PROPERTIES EXCLUDE_FROM_ALL ON)
  set_tests_properties(examples PROPERTIES DISABLED ON)
  if(NOT WIN32)
    set_target_properties(test_posix_examples PROPERTIES EXCLUDE_FROM_ALL ON)
    set_tests_properties(posix_examples PROPERTIES DISABLED ON)
  endif()
endif()
kelgen_label_test(examples threads desktop)
if(NOT WIN32)
  kelgen_label_test(posix_examples threads)
endif()
