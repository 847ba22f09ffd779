# The strings that the tests load.
kelgen_add_resources(test_text "${CMAKE_CURRENT_LIST_DIR}/Strings.rc")
kelgen_label_test(text desktop)
