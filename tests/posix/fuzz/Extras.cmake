# Every source in fuzz/ is one fuzz target with the usual entry point; its seeds lie in fuzz/corpus/NAME. Here all of them become
# part of one program, each entry point under a name of its own, with a generated table of them.
file(GLOB fuzz_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/*.cpp")
set(fuzz_declarations "")
set(fuzz_rows "")
foreach(source IN LISTS fuzz_sources)
  cmake_path(GET source STEM name)
  # A target of its own: the entry point's name differs in each.
  add_library(fuzz_${name} OBJECT "${source}")
  target_compile_definitions(fuzz_${name} PRIVATE "LLVMFuzzerTestOneInput=Fuzz${name}")
  target_link_libraries(fuzz_${name} PRIVATE kelgen::kelgen kelgen_options)
  target_link_libraries(test_posix_fuzz PRIVATE fuzz_${name})
  string(APPEND fuzz_declarations "extern \"C\" int Fuzz${name}(const unsigned char* data, std::size_t size);\n")
  string(APPEND fuzz_rows "    {\"${name}\", \"${PROJECT_SOURCE_DIR}/fuzz/corpus/${name}\", Fuzz${name}},\n")
endforeach()
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/FuzzTargets.cpp" @ONLY CONTENT [=[
// FuzzTargets.cpp: the table of fuzz targets.
#include "posix/fuzz/FuzzTargets.h"

@fuzz_declarations@
const std::vector<FuzzTarget> fuzzTargets = {
@fuzz_rows@};
]=])
target_sources(test_posix_fuzz PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/FuzzTargets.cpp")
