include("${PROJECT_SOURCE_DIR}/tests/support/system/Programs.cmake")
