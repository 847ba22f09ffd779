# The Windows target: mingw-w64 cross compiler with POSIX threads, programs run by Wine in a virtual display. An installed tree holds
# this file, too, for hosts: --toolchain=, in lib/cmake/kelgen.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(_mingw x86_64-w64-mingw32)
# Debian has two thread models side by side and names them; elsewhere there is only this one.
find_program(KELGEN_MINGW_GCC NAMES ${_mingw}-gcc-posix ${_mingw}-gcc)
find_program(KELGEN_MINGW_GXX NAMES ${_mingw}-g++-posix ${_mingw}-g++)
set(CMAKE_C_COMPILER ${KELGEN_MINGW_GCC})
set(CMAKE_CXX_COMPILER ${KELGEN_MINGW_GXX})
set(CMAKE_RC_COMPILER ${_mingw}-windres)

# Libraries, headers and packages are looked for in these folders only, so that nothing native is taken: the caller's own roots,
# the prefixes that it names, the tree that this file is installed in, the cross compiler's.
set(_roots ${CMAKE_PREFIX_PATH} ${kelgen_ROOT} $ENV{kelgen_ROOT})
if(DEFINED ENV{CMAKE_PREFIX_PATH})
  file(TO_CMAKE_PATH "$ENV{CMAKE_PREFIX_PATH}" _prefixes)
  list(APPEND _roots ${_prefixes})
endif()
if(EXISTS "${CMAKE_CURRENT_LIST_DIR}/kelgenConfig.cmake")
  cmake_path(SET _tree NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../../..")
  list(APPEND _roots "${_tree}")
endif()
foreach(_root IN LISTS _roots ITEMS /usr/${_mingw})
  if(NOT _root IN_LIST CMAKE_FIND_ROOT_PATH)
    list(APPEND CMAKE_FIND_ROOT_PATH "${_root}")
  endif()
endforeach()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

if(NOT DEFINED CMAKE_CROSSCOMPILING_EMULATOR)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/wine-run.sh")
endif()
