# What replaces the program's allocation functions is a part of the programs alone whose allocations are to fail.
target_sources(test_posix_faults PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/faults/FailingMemory.cpp")
include("${PROJECT_SOURCE_DIR}/tests/support/system/Programs.cmake")
kelgen_label_test(posix_faults faults)
