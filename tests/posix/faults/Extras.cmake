# What stands before the allocation functions and system calls is a part of the programs alone where they are to fail.
target_sources(test_posix_faults PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/faults/FailingMemory.cpp"
  "${PROJECT_SOURCE_DIR}/tests/support/faults/FailingCalls.cpp")
# A service's program in which something fails.
add_executable(test_failing_service "${PROJECT_SOURCE_DIR}/tests/support/system/ServiceProgram.cpp"
  "${PROJECT_SOURCE_DIR}/tests/support/faults/FailingProgram.cpp" "${PROJECT_SOURCE_DIR}/tests/support/faults/FailingMemory.cpp"
  "${PROJECT_SOURCE_DIR}/tests/support/faults/FailingCalls.cpp")
target_include_directories(test_failing_service PRIVATE "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(test_failing_service PRIVATE kelgen::platform kelgen_options)
add_dependencies(test_posix_faults test_failing_service)
target_compile_definitions(test_posix_faults PRIVATE FAILING_SERVICE_PROGRAM="$<TARGET_FILE:test_failing_service>")
# A library with resources, which nothing has loaded.
add_dependencies(test_posix_faults test_framework_extension)
target_compile_definitions(test_posix_faults PRIVATE RESOURCE_LIBRARY="$<TARGET_FILE:test_framework_extension>"
  VERSIONED_LIBRARY="$<TARGET_FILE:kelgen::kelgen>")
include("${PROJECT_SOURCE_DIR}/tests/support/system/Programs.cmake")
kelgen_label_test(posix_faults faults)
