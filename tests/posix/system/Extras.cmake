# The program that watched services run.
include("${PROJECT_SOURCE_DIR}/tests/support/system/Programs.cmake")
target_sources(test_posix_system PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/faults/FailingMemory.cpp")
