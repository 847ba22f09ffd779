# The resources that examples load.
kelgen_add_resources(test_headers "${PROJECT_SOURCE_DIR}/tests/headers/Headers.rc" DEPENDS "${PROJECT_SOURCE_DIR}/tests/headers/Headers.h")
kelgen_label_test(headers desktop)
