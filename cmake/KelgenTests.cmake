# KelgenTests.cmake: one GoogleTest program for each folder below tests/ that holds sources.

# kelgen_add_test_program(FOLDER)
# Builds tests/FOLDER/*.cpp as test_FOLDER (slashes become underscores) and adds it to CTest as one entry; its report is
# reports/FOLDER.xml in the build folder. kelgen::kelgen is linked; a folder's own CMakeLists.txt may add more to it.
function(kelgen_add_test_program folder)
  string(REPLACE "/" "_" name "${folder}")
  file(GLOB sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp")
  add_executable(test_${name} ${sources})
  target_include_directories(test_${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(test_${name} PRIVATE kelgen_test_support)
  target_precompile_headers(test_${name} REUSE_FROM kelgen_test_support)
  # Wine shows the root of the file system as drive Z.
  add_test(NAME ${name}
    COMMAND test_${name} "--gtest_output=xml:$<$<BOOL:${WIN32}>:Z:>${PROJECT_BINARY_DIR}/reports/${name}.xml" --gtest_brief=1
    WORKING_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()

# kelgen_label_test(NAME LABEL...)
# Says what is special about a test. "threads": the thread sanitizer runs it. "desktop": on windows it shares the one mouse, focus
# and foreground window with the others so labelled, and they run one after the other. "plain": no GoogleTest program.
function(kelgen_label_test name)
  set_property(TEST ${name} APPEND PROPERTY LABELS ${ARGN})
  if(WIN32 AND "desktop" IN_LIST ARGN)
    set_property(TEST ${name} APPEND PROPERTY RESOURCE_LOCK desktop)
  endif()
endfunction()
