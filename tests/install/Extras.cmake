# The installed package, used by a host that has nothing else.
if(NOT WIN32 AND NOT KELGEN_SANITIZE)
  add_test(NAME install COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/install/check-package" "${CMAKE_BINARY_DIR}" "${PROJECT_SOURCE_DIR}")
  set_tests_properties(install PROPERTIES TIMEOUT 120)
endif()
