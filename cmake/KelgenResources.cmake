# KelgenResources.cmake: resource scripts for programs and libraries of both targets.

# As a script: writes the header beside a compiled one. The assembler includes that one's bytes behind the back of a compiler's
# cache, which would take an older object for the same: the header tells it by their sum.
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  file(SHA256 "${COMPILED}" sum)
  file(WRITE "${COMPILED}.h" "// ${sum}\n")
  return()
endif()

# kelgen_add_resources(TARGET FILE.rc... [DEPENDS files...])
# Compiles each script and makes its resources part of TARGET, a program or shared library that links kelgen. The calls of the
# platform find them by TARGET's module handle. The script sees TARGET's include folders and its own folder. DEPENDS names files
# that the scripts include; a change of one compiles again.
# On Linux the project's own compiler preprocesses the script, and <windows.h> is a header of ours with what scripts use of it:
# windres is all that this takes of mingw-w64. The compiled script lies in the section .kelgen.res of the ELF file and is
# registered while the file is loaded.
function(kelgen_add_resources target)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  find_program(KELGEN_WINDRES NAMES x86_64-w64-mingw32-windres windres DOC "The compiler for resource scripts")
  if(NOT KELGEN_WINDRES)
    message(FATAL_ERROR "kelgen_add_resources(${target}) needs windres, the resource compiler of mingw-w64 (Debian: binutils-mingw-w64-x86-64)")
  endif()
  list(TRANSFORM ARG_DEPENDS REPLACE "^([^/].*)$" "${CMAKE_CURRENT_SOURCE_DIR}/\\1")
  set(folders "$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>")
  set(preprocessor "")
  set(finish "")
  if(NOT WIN32)
    # The one folder that kelgen's own headers lie in, in the source tree or installed.
    set(headers "$<FILTER:$<TARGET_PROPERTY:kelgen::platform,INTERFACE_INCLUDE_DIRECTORIES>,INCLUDE,.>")
    set(preprocessor "--preprocessor=${CMAKE_CXX_COMPILER}" --preprocessor-arg=-E --preprocessor-arg=-xc
      --preprocessor-arg=-DRC_INVOKED "-I${headers}" "-I${headers}/kelgen/platform/posix/resources/scripts")
  endif()
  foreach(script IN LISTS ARG_UNPARSED_ARGUMENTS)
    cmake_path(ABSOLUTE_PATH script NORMALIZE)
    cmake_path(GET script PARENT_PATH script_folder)
    cmake_path(GET script STEM name)
    string(SHA256 identity "${target} ${script}")
    string(SUBSTRING "${identity}" 0 12 identity)
    set(stem "${CMAKE_CURRENT_BINARY_DIR}/${target}.resources/${name}-${identity}")
    file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/${target}.resources")
    if(WIN32)
      set(compiled "${stem}.obj")
      set(format coff)
    else()
      set(compiled "${stem}.res")
      set(format res)
      set(finish COMMAND "${CMAKE_COMMAND}" "-DCOMPILED=${compiled}" -P "${CMAKE_CURRENT_FUNCTION_LIST_FILE}")
    endif()
    add_custom_command(OUTPUT "${compiled}"
      COMMAND "${KELGEN_WINDRES}" -O ${format} ${preprocessor} "-I${script_folder}" "$<$<BOOL:${folders}>:-I$<JOIN:${folders},;-I>>"
        -i "${script}" -o "${compiled}"
      ${finish}
      DEPENDS "${script}" ${ARG_DEPENDS} COMMENT "Compiling resources ${name} of ${target}" VERBATIM COMMAND_EXPAND_LISTS)
    if(WIN32)
      set_source_files_properties("${compiled}" PROPERTIES EXTERNAL_OBJECT TRUE GENERATED TRUE)
      target_sources(${target} PRIVATE "${compiled}")
    else()
      _kelgen_embed_resources(${target} "${compiled}" "${stem}.cpp" "kelgen_resources_${identity}")
    endif()
  endforeach()
endfunction()

# Writes and adds a source that holds the bytes of COMPILED and registers them under the module that they become part of.
function(_kelgen_embed_resources target compiled source symbol)
  file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT [=[
// The compiled resources of one script: their bytes, and their registration while this file is loaded.
#include "@compiled@.h"
#include <kelgen/platform/posix/resources/api/ResourceModules.h>

asm(R"(
        .pushsection .kelgen.res, "a", @progbits
        .balign 16
        .globl @symbol@_begin
        .hidden @symbol@_begin
@symbol@_begin:
        .incbin "@compiled@"
        .globl @symbol@_end
        .hidden @symbol@_end
@symbol@_end:
        .popsection
)");

extern "C" {
__attribute__((visibility("hidden"))) extern const unsigned char @symbol@_begin[];
__attribute__((visibility("hidden"))) extern const unsigned char @symbol@_end[];
// The linker's name for the first byte of the loaded file.
__attribute__((visibility("hidden"))) extern const char __ehdr_start[];
}

namespace {

const kelgen::posix::RegisteredResources resources(__ehdr_start, @symbol@_begin, @symbol@_end);

}  // namespace
]=])
  set_source_files_properties("${source}" PROPERTIES OBJECT_DEPENDS "${compiled}" SKIP_PRECOMPILE_HEADERS ON)
  target_sources(${target} PRIVATE "${source}")
endfunction()
