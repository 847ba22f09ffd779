# The program that tests start on different code pages.
add_executable(test_page_program "${PROJECT_SOURCE_DIR}/tests/support/ansipage/PageProgram.cpp")
target_link_libraries(test_page_program PRIVATE kelgen::platform kelgen_options)
add_dependencies(test_posix_ansipage test_page_program)
target_compile_definitions(test_posix_ansipage PRIVATE "PAGE_PROGRAM=\"$<TARGET_FILE:test_page_program>\"")
