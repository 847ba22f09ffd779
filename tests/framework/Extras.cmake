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
