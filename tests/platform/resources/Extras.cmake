# The resources that the tests look up.
kelgen_add_resources(test_platform_resources "${CMAKE_CURRENT_LIST_DIR}/Strings.rc")
