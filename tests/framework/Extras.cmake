# The program's own texts, and two libraries that have texts too.
set(folder "${PROJECT_SOURCE_DIR}/tests/support/framework")
kelgen_add_resources(test_framework "${PROJECT_SOURCE_DIR}/tests/framework/Program.rc"
  DEPENDS "${PROJECT_SOURCE_DIR}/tests/framework/Notes.rc")
foreach(name Extension Language)
  string(TOLOWER "test_framework_${name}" library)
  add_library(${library} SHARED "${folder}/ResourceLibrary.cpp")
  target_include_directories(${library} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_compile_definitions(${library} PRIVATE KELGEN_RESOURCE_LIBRARY=${name}State)
  target_link_libraries(${library} PRIVATE kelgen::kelgen kelgen_options)
  kelgen_add_resources(${library} "${folder}/${name}.rc")
  target_link_libraries(test_framework PRIVATE ${library})
endforeach()
kelgen_label_test(framework threads desktop)

# A program with the library's main function, which ends as it is told.
add_executable(test_ending_program "${folder}/EndingProgram.cpp")
target_link_libraries(test_ending_program PRIVATE kelgen::main kelgen_options)
add_dependencies(test_framework test_ending_program)
target_compile_definitions(test_framework PRIVATE ENDING_PROGRAM="$<$<BOOL:${WIN32}>:Z:>$<TARGET_FILE:test_ending_program>")
