# What the debugger's printers show of a program's values. Sanitized libraries have line numbers only.
if(NOT WIN32 AND NOT CMAKE_CROSSCOMPILING AND NOT KELGEN_SANITIZE AND CMAKE_BUILD_TYPE STREQUAL Debug)
  find_program(KELGEN_GDB gdb)
  if(KELGEN_GDB)
    add_executable(test_debug_program "${CMAKE_CURRENT_LIST_DIR}/Program.cpp")
    target_link_libraries(test_debug_program PRIVATE kelgen::kelgen kelgen_options)
    target_compile_options(test_debug_program PRIVATE -g -O0)
    add_test(NAME debug COMMAND "${CMAKE_CURRENT_LIST_DIR}/check-printers" "${KELGEN_GDB}"
      "${PROJECT_SOURCE_DIR}/tools/debug/kelgen-gdb.py" $<TARGET_FILE:test_debug_program>)
    set_tests_properties(debug PROPERTIES TIMEOUT 120 LABELS plain)
  endif()
endif()
