# KelgenLibrary.cmake: one function for the three shared libraries.

# What changes when hosts have to be built again: the major version, before 1.0 the minor one, too. On Linux the libraries' SONAMEs
# carry it, on Windows the names of the lower two and an import of every host: kelgen.dll keeps the name that hosts look it up by.
set(KELGEN_INTERFACE_VERSION ${PROJECT_VERSION_MAJOR})
if(PROJECT_VERSION_MAJOR EQUAL 0)
  string(APPEND KELGEN_INTERFACE_VERSION ".${PROJECT_VERSION_MINOR}")
endif()
string(REPLACE "." "_" KELGEN_INTERFACE_SYMBOL "kelgen_interface_${KELGEN_INTERFACE_VERSION}")
if(WIN32)
  set(KELGEN_INTERFACE_LINK "-Wl,--undefined=__imp_${KELGEN_INTERFACE_SYMBOL}")
endif()

# By contract the bytes of text are signed numbers, which hashes and comparisons show: where the processor's own char has no sign, it
# gets one.
include(CheckCXXSourceCompiles)
check_cxx_source_compiles("static_assert(char(-1) < 0); int main() {}" KELGEN_CHAR_IS_SIGNED)
if(NOT KELGEN_CHAR_IS_SIGNED)
  set(KELGEN_SIGNED_CHAR -fsigned-char)
endif()

# Makes every program that links TARGET import a symbol that only libraries of this interface version export.
function(_kelgen_export_interface target)
  set(source "${CMAKE_CURRENT_BINARY_DIR}/Interface.cpp")
  file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT [=[
// The interface version that hosts were built for.
extern "C" {
__declspec(dllexport) extern const int @KELGEN_INTERFACE_SYMBOL@;
const int @KELGEN_INTERFACE_SYMBOL@ = 1;
}
]=])
  target_sources(${target} PRIVATE "${source}")
  target_link_options(${target} INTERFACE "${KELGEN_INTERFACE_LINK}")
endfunction()

# kelgen_add_library(NAME OUTPUT SYMBOL SOURCES... [DEPENDS targets...])
# Makes the shared library kelgen::NAME. SYMBOL is defined while its own sources are compiled (see Export.h).
function(kelgen_add_library name output symbol)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  set(target kelgen_${name})
  add_library(${target} SHARED ${ARG_SOURCES})
  add_library(kelgen::${name} ALIAS ${target})
  if(WIN32)
    set_target_properties(${target} PROPERTIES PREFIX "")
    if(output STREQUAL PROJECT_NAME)
      _kelgen_export_interface(${target})
    else()
      set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_NAME "${output}-${KELGEN_INTERFACE_VERSION}")
    endif()
  else()
    # The libraries find each other in a tree wherever it lies. In the build tree too: the room that CMake would leave there for
    # another path is empty names, by which the loader means the current folder.
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)
  endif()
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${output} EXPORT_NAME ${name}
    VERSION ${PROJECT_VERSION} SOVERSION ${KELGEN_INTERFACE_VERSION} DEFINE_SYMBOL ${symbol})
  target_include_directories(${target} PUBLIC
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>" "$<INSTALL_INTERFACE:include>")
  target_compile_features(${target} PUBLIC cxx_std_20)
  # Checks in headers; what they call every build of the libraries has. In a build of its own kelgen has them by its flags.
  set(checked "$<$<CONFIG:Debug>:KELGEN_CHECKED>")
  target_compile_definitions(${target} INTERFACE "$<INSTALL_INTERFACE:${checked}>")
  if(NOT PROJECT_IS_TOP_LEVEL)
    target_compile_definitions(${target} INTERFACE "$<BUILD_INTERFACE:${checked}>")
  endif()
  # Members callable through a null pointer, 16-bit text over char16_t literals, and bytes of text that have a sign as on x86.
  target_compile_options(${target} PUBLIC -fno-delete-null-pointer-checks -fno-strict-aliasing ${KELGEN_SIGNED_CHAR})
  target_link_libraries(${target} PUBLIC ${ARG_DEPENDS} PRIVATE $<BUILD_INTERFACE:kelgen_options> ${ARG_PRIVATE_DEPENDS})
  target_link_options(${target} PRIVATE -Wl,--no-undefined)
  # Builds in two thirds of the time, on windows in a quarter. tools/check-headers sees that headers do not rely on it.
  target_precompile_headers(${target} PRIVATE <algorithm> <memory> <string> <vector> <kelgen/platform/Win32.h>)
  if(KELGEN_DEBUG_INFO STREQUAL "-g1" AND NOT KELGEN_SANITIZE)
    # A debugger finds the library's types described in the library alone.
    target_compile_options(${target} PRIVATE $<$<CONFIG:Debug>:-g>)
  endif()
  if(CMAKE_BUILD_TYPE STREQUAL RelWithDebInfo)
    _kelgen_split_debug(${target})
  endif()
  if(KELGEN_UNITY GREATER 1)
    _kelgen_unite(${target} ${ARG_SOURCES})
  endif()
endfunction()

# Moves what a debugger needs into a file of its own, which may be installed or not (component "debug"): the debugger looks for it in the
# folder .debug beside the library.
function(_kelgen_split_debug target)
  set(library "$<TARGET_FILE:${target}>")
  set(file "${CMAKE_BINARY_DIR}/debug/$<TARGET_FILE_NAME:${target}>.debug")
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_BINARY_DIR}/debug"
    COMMAND "${CMAKE_OBJCOPY}" --only-keep-debug "${library}" "${file}"
    COMMAND "${CMAKE_OBJCOPY}" --strip-debug "--add-gnu-debuglink=${file}" "${library}" VERBATIM)
  if(WIN32)
    install(FILES "${file}" DESTINATION "${CMAKE_INSTALL_BINDIR}/.debug" COMPONENT debug)
  else()
    install(FILES "${file}" DESTINATION "${CMAKE_INSTALL_LIBDIR}/.debug" COMPONENT debug)
  endif()
endfunction()

# Hands the sources to the compiler several at a time: a build from nothing takes a third of the time, one after a change of a source
# longer. Only sources of one folder come together, so that names in unnamed namespaces have to differ there only.
function(_kelgen_unite target)
  foreach(source IN LISTS ARGN)
    cmake_path(GET source PARENT_PATH folder)
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
    string(REPLACE "/" "_" folder "${folder}")
    list(APPEND of_${folder} "${source}")
    list(LENGTH of_${folder} count)
    math(EXPR group "(${count} - 1) / ${KELGEN_UNITY}")
    set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${folder}_${group}")
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
