target_link_libraries(test_posix_view PRIVATE kelgen::view)
target_compile_definitions(test_posix_view PRIVATE "KELGEN_SVG_SOURCE=\"${CMAKE_CURRENT_SOURCE_DIR}/posix/view/\"")
kelgen_label_test(posix_view threads)
# A program that shows its windows when its environment asks for that.
add_executable(test_view_host "${PROJECT_SOURCE_DIR}/tests/support/view/HostProgram.cpp")
target_link_libraries(test_view_host PRIVATE kelgen::framework kelgen_options)
add_dependencies(test_posix_view test_view_host)
target_compile_definitions(test_posix_view PRIVATE "VIEW_HOST=\"$<TARGET_FILE:test_view_host>\"")
