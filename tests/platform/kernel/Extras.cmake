include("${PROJECT_SOURCE_DIR}/tests/support/system/Programs.cmake")
kelgen_label_test(platform_kernel threads)
