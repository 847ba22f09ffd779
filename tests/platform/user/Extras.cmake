# The resources that the tests look up.
kelgen_add_resources(test_platform_user "${CMAKE_CURRENT_LIST_DIR}/User.rc" DEPENDS "${CMAKE_CURRENT_LIST_DIR}/Icons.ico"
  "${CMAKE_CURRENT_LIST_DIR}/Cursor.cur")
kelgen_add_resources(test_platform_user "${CMAKE_CURRENT_LIST_DIR}/Examples.rc" DEPENDS
  "${PROJECT_SOURCE_DIR}/examples/monitor/Monitor.rc" "${PROJECT_SOURCE_DIR}/examples/monitor/Resource.h"
  "${PROJECT_SOURCE_DIR}/examples/monitor/Monitor.ico" "${PROJECT_SOURCE_DIR}/examples/guides/application.rc"
  "${PROJECT_SOURCE_DIR}/examples/guides/application.h")
# Where the icon of a script lies that another one includes.
target_include_directories(test_platform_user PRIVATE "${PROJECT_SOURCE_DIR}/examples/monitor")
kelgen_label_test(platform_user threads desktop)
