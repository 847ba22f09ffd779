target_link_libraries(test_posix_view PRIVATE kelgen::view)
    target_compile_definitions(test_posix_view PRIVATE "KELGEN_SVG_SOURCE=\"${CMAKE_CURRENT_SOURCE_DIR}/posix/view/\"")
        kelgen_label_test(posix_view threads)
