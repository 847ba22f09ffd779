# KelgenBuild.cmake: settings that hold for everything built here: language, warnings, sanitizers, ccache, output folders.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Programs and Windows libraries share one folder: a Windows program finds its libraries beside itself.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")

if(WIN32)
  set(KELGEN_PLATFORM windows)
else()
  set(KELGEN_PLATFORM posix)
endif()

# Line tables are enough for a stack trace, and -O1 keeps both the build and the tests fast.
set(KELGEN_DEBUG_INFO "-g1" CACHE STRING "The compiler's flag for debug information in debug builds")
set(KELGEN_OPTIMIZE "-O1" CACHE STRING "The compiler's flag for optimisation in debug builds")
set(CMAKE_CXX_FLAGS_DEBUG "${KELGEN_OPTIMIZE} ${KELGEN_DEBUG_INFO} -DKELGEN_CHECKED")
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # No unit comes to a gigabyte: looking for what it could give back is in vain.
  string(APPEND CMAKE_CXX_FLAGS_DEBUG " --param=ggc-min-expand=1000 --param=ggc-min-heapsize=1000000")
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
if(NOT WIN32)
  # Calls inside a library stay in it, and calls between them go straight through the address table.
  string(APPEND CMAKE_CXX_FLAGS_RELEASE " -fno-semantic-interposition -fno-plt")
  set(CMAKE_SHARED_LINKER_FLAGS_RELEASE "-Wl,-Bsymbolic-functions")
endif()
# The shipped code, with what a debugger needs.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "${CMAKE_CXX_FLAGS_RELEASE} -g")
set(CMAKE_SHARED_LINKER_FLAGS_RELWITHDEBINFO "${CMAKE_SHARED_LINKER_FLAGS_RELEASE}")

add_library(kelgen_options INTERFACE)
target_compile_options(kelgen_options INTERFACE "-ffile-prefix-map=${CMAKE_CURRENT_SOURCE_DIR}/=")
# Warnings are for those who work on kelgen: a project that has it as a part chooses its own.
if(PROJECT_IS_TOP_LEVEL)
  # The identity classes have virtual operations and, by contract, no virtual destructor: no -Wnon-virtual-dtor.
  target_compile_options(kelgen_options INTERFACE
    -Wall -Wextra -Werror -Wold-style-cast -Wcast-qual -Wshadow -Woverloaded-virtual)
  if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    # For the same reason: clang warns of each container that holds such an object by value. And it takes a name of another source
    # that is compiled together with this one for a shadowed one.
    target_compile_options(kelgen_options INTERFACE -Wno-delete-non-abstract-non-virtual-dtor -Wno-shadow)
  endif()
endif()
if(KELGEN_TESTS OR KELGEN_FUZZ)
  # What only tests and fuzz targets call is exported too (see platform/Export.h).
  target_compile_definitions(kelgen_options INTERFACE KELGEN_TESTED)
endif()
if(KELGEN_SANITIZE)
  target_compile_options(kelgen_options INTERFACE "-fsanitize=${KELGEN_SANITIZE}" -fno-omit-frame-pointer)
  target_link_options(kelgen_options INTERFACE "-fsanitize=${KELGEN_SANITIZE}")
  # Each compiler has its own way to tell.
  foreach(sanitizer IN ITEMS address thread)
    if(KELGEN_SANITIZE MATCHES ${sanitizer})
      string(TOUPPER "KELGEN_${sanitizer}_SANITIZER" definition)
      target_compile_definitions(kelgen_options INTERFACE ${definition})
    endif()
  endforeach()
  if(KELGEN_SANITIZE MATCHES undefined)
    # By contract some members are called through a null pointer.
    target_compile_options(kelgen_options INTERFACE -fno-sanitize-recover=undefined -fno-sanitize=null)
  endif()
endif()
if(KELGEN_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # Sanitized programs are large: lld links one in a quarter of the time that the usual linker takes.
  string(REGEX MATCH "^[0-9]+" _major "${CMAKE_CXX_COMPILER_VERSION}")
  find_program(KELGEN_LLD ld.lld PATHS "/usr/lib/llvm-${_major}/bin" NO_DEFAULT_PATH)
  if(KELGEN_LLD)
    target_link_options(kelgen_options INTERFACE "--ld-path=${KELGEN_LLD}")
  endif()
endif()
if(KELGEN_FUZZ)
  target_compile_options(kelgen_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(KELGEN_FUZZ OR (KELGEN_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES Clang))
  # The sanitizers' and the fuzzer's calls are part of the program only: libraries take them from there.
  target_link_options(kelgen_options INTERFACE LINKER:-z,undefs)
endif()

set(KELGEN_VECTOR "auto" CACHE STRING "Vector code: auto for the processor's, plain for none")
set_property(CACHE KELGEN_VECTOR PROPERTY STRINGS auto plain)
if(KELGEN_VECTOR STREQUAL plain)
  target_compile_definitions(kelgen_options INTERFACE KELGEN_VECTOR_PLAIN)
endif()

find_program(KELGEN_CCACHE ccache)
if(KELGEN_CCACHE)
  # By what was read, not by what the preprocessor made of it: a precompiled header knows its headers by their bytes, comments included.
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
    "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1 CCACHE_DEPEND=1
    "CCACHE_SLOPPINESS=pch_defines,time_macros" "${KELGEN_CCACHE}")
  set(CMAKE_C_COMPILER_LAUNCHER "${CMAKE_CXX_COMPILER_LAUNCHER}")
endif()

if(WIN32)
  # One shared C++ runtime for all libraries and programs: exceptions and run-time types cross their borders.
  foreach(_dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${_dll}"
      OUTPUT_VARIABLE _path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${_path}")
      set(_path "/usr/x86_64-w64-mingw32/lib/${_dll}")
    endif()
    file(COPY "${_path}" DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    list(APPEND KELGEN_RUNTIME_DLLS "${_path}")
  endforeach()
endif()
