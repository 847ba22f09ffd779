# The resources that the tests load, and the version that the libraries say they have.
kelgen_add_resources(test_system "${CMAKE_CURRENT_LIST_DIR}/Resource.rc")
target_compile_definitions(test_system PRIVATE "KELGEN_VERSION=\"${PROJECT_VERSION}\"")
include("${PROJECT_SOURCE_DIR}/tests/support/system/Programs.cmake")
kelgen_label_test(system threads)
