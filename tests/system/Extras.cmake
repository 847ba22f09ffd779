# The resources that the tests load.
kelgen_add_resources(test_system "${CMAKE_CURRENT_LIST_DIR}/Resource.rc")
include("${PROJECT_SOURCE_DIR}/tests/support/system/Programs.cmake")
kelgen_label_test(system threads)
