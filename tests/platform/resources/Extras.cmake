# The resources that the tests look up, in the test program and in a library that it loads.
kelgen_add_resources(test_platform_resources "${CMAKE_CURRENT_LIST_DIR}/Strings.rc")

file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/ResourceModule.cpp" CONTENT "// Nothing but resources.\n")
add_library(test_resource_module MODULE "${CMAKE_CURRENT_BINARY_DIR}/ResourceModule.cpp")
target_link_libraries(test_resource_module PRIVATE kelgen::kelgen)
set_target_properties(test_resource_module PROPERTIES LIBRARY_OUTPUT_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
kelgen_add_resources(test_resource_module "${CMAKE_CURRENT_LIST_DIR}/Module.rc" "${CMAKE_CURRENT_LIST_DIR}/MoreOfModule.rc"
  "${CMAKE_CURRENT_LIST_DIR}/Languages.rc")
add_dependencies(test_platform_resources test_resource_module)
target_compile_definitions(test_platform_resources PRIVATE "RESOURCE_MODULE=\"$<TARGET_FILE:test_resource_module>\"")
