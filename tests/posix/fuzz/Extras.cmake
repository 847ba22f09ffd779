# Every source in fuzz/ is one fuzz target with the usual entry point; its seeds lie in fuzz/corpus/NAME. Here all of them become
# part of one program, each entry point under a name of its own, with a generated table of them.
include("${PROJECT_SOURCE_DIR}/fuzz/Targets.cmake")
set(fuzz_declarations "")
set(fuzz_rows "")
set(fuzz_sources "")
foreach(name IN LISTS KELGEN_FUZZ_TARGETS)
  list(APPEND fuzz_sources "${PROJECT_SOURCE_DIR}/fuzz/${name}.cpp")
  string(APPEND fuzz_declarations "extern \"C\" int Fuzz${name}(const unsigned char* data, std::size_t size);\n")
  string(APPEND fuzz_rows "    {\"${name}\", \"${PROJECT_SOURCE_DIR}/fuzz/corpus/${name}\", Fuzz${name}},\n")
  target_link_libraries(test_posix_fuzz PRIVATE ${KELGEN_FUZZ_LIBRARIES_${name}})
endforeach()
# Compiled together they take a tenth of the time.
set(united "${CMAKE_CURRENT_BINARY_DIR}/united/FuzzSources.cpp")
add_custom_command(OUTPUT "${united}"
  COMMAND awk -v "united=${united}" -v entry=LLVMFuzzerTestOneInput -v prefix=Fuzz -f "${PROJECT_SOURCE_DIR}/cmake/unite.awk" ${fuzz_sources}
  DEPENDS ${fuzz_sources} "${PROJECT_SOURCE_DIR}/cmake/unite.awk" COMMENT "Uniting the fuzz targets" VERBATIM)
target_sources(test_posix_fuzz PRIVATE "${united}")
target_include_directories(test_posix_fuzz PRIVATE "${PROJECT_SOURCE_DIR}/fuzz")
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/FuzzTargets.cpp" @ONLY CONTENT [=[
// FuzzTargets.cpp: the table of fuzz targets.
#include "posix/fuzz/FuzzTargets.h"

@fuzz_declarations@
const std::vector<FuzzTarget> fuzzTargets = {
@fuzz_rows@};
]=])
target_sources(test_posix_fuzz PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/FuzzTargets.cpp")
