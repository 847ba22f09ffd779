# Every source in fuzz/ is one fuzz target with the usual entry point; its seeds lie in fuzz/corpus/NAME. Here all of them become
# part of one program, each entry point under a name of its own, with a generated table of them.
include("${PROJECT_SOURCE_DIR}/fuzz/Targets.cmake")
set(fuzz_declarations "")
set(fuzz_rows "")
foreach(name IN LISTS KELGEN_FUZZ_TARGETS)
  # A target of its own: the entry point's name differs in each.
  add_library(fuzz_${name} OBJECT "${PROJECT_SOURCE_DIR}/fuzz/${name}.cpp")
  target_compile_definitions(fuzz_${name} PRIVATE "LLVMFuzzerTestOneInput=Fuzz${name}")
  target_link_libraries(fuzz_${name} PRIVATE ${KELGEN_FUZZ_LIBRARIES_${name}} kelgen_options)
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
