# What a host's author may write, and what must not compile, by the compiler of this build.
add_test(NAME compile COMMAND "${CMAKE_CURRENT_LIST_DIR}/check-cases" "${CMAKE_CURRENT_LIST_DIR}" "${CMAKE_CXX_COMPILER}" -std=c++20
  -Wall -Wextra -Werror -fno-delete-null-pointer-checks -fno-strict-aliasing ${KELGEN_SIGNED_CHAR} "-I${PROJECT_SOURCE_DIR}")
set_tests_properties(compile PROPERTIES TIMEOUT 600 LABELS plain)
