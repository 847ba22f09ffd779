# The resources that the tests look up.
kelgen_add_resources(test_platform_user "${CMAKE_CURRENT_LIST_DIR}/User.rc" DEPENDS "${CMAKE_CURRENT_LIST_DIR}/Icons.ico"
  "${CMAKE_CURRENT_LIST_DIR}/Cursor.cur")
kelgen_label_test(platform_user threads desktop)
