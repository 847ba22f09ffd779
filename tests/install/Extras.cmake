# The installed package, used by a host that has nothing else.
if(NOT KELGEN_SANITIZE AND (WIN32 OR NOT CMAKE_CROSSCOMPILING))
  add_test(NAME install COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/install/check-package" "${CMAKE_BINARY_DIR}" "${PROJECT_SOURCE_DIR}"
    "${CMAKE_CXX_COMPILER}" ${KELGEN_PLATFORM})
  set_tests_properties(install PROPERTIES TIMEOUT 600)
  kelgen_label_test(install plain)
  # What is installed.
  add_custom_target(test_install DEPENDS kelgen_kelgen kelgen_main)
  if(TARGET kelgen_view)
    add_dependencies(test_install kelgen_view)
  endif()
endif()

# A host that is an application object, in the build itself.
add_executable(test_application "${CMAKE_CURRENT_SOURCE_DIR}/install/consumer/application.cpp")
target_link_libraries(test_application PRIVATE kelgen::main kelgen_options)
add_test(NAME application COMMAND test_application "two words" WORKING_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
set_tests_properties(application PROPERTIES TIMEOUT 60)
kelgen_label_test(application plain)
