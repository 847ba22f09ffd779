# KelgenView.cmake: kelgen::view, the desktop of a native program in a browser: a library of its own, which programs load when they are
# asked for it. Included from kelgen/CMakeLists.txt.
set(KELGEN_BUILD_VIEW AUTO CACHE STRING "Build kelgen::view: ON, OFF, or AUTO for a build of its own with Boost.Beast's headers at hand")
set_property(CACHE KELGEN_BUILD_VIEW PROPERTY STRINGS AUTO ON OFF)
set(build_view ${KELGEN_BUILD_VIEW})
if(WIN32)
  # The desktop is the system's there.
  set(build_view OFF)
endif()
if(build_view STREQUAL AUTO AND NOT PROJECT_IS_TOP_LEVEL)
  set(build_view OFF)
endif()
if(build_view)
  find_path(KELGEN_BOOST_HEADERS boost/beast/http/parser.hpp)
  if(NOT KELGEN_BOOST_HEADERS)
    if(NOT build_view STREQUAL AUTO)
      message(FATAL_ERROR "kelgen::view needs the headers of Boost.Beast (Debian: libboost-dev)")
    endif()
    message(STATUS "kelgen::view is left out: there are no headers of Boost.Beast (Debian: libboost-dev)")
    set(build_view OFF)
  endif()
endif()
if(NOT build_view)
  return()
endif()

# The files of the page as texts.
set(page_source "${CMAKE_CURRENT_BINARY_DIR}/view/Page.cpp")
set(page_folder "${CMAKE_CURRENT_SOURCE_DIR}/view/page")
set(texts "")
foreach(file IN ITEMS Style=picture.css Layout=page.css Page=page.html Script=page.js)
  string(REGEX MATCH "^(.*)=(.*)$" _ "${file}")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${page_folder}/${CMAKE_MATCH_2}")
  set(name "k${CMAKE_MATCH_1}")
  file(READ "${page_folder}/${CMAKE_MATCH_2}" text)
  string(APPEND texts "const std::string_view ${name} = R\"page(${text})page\";\n")
endforeach()
file(CONFIGURE OUTPUT "${page_source}" @ONLY CONTENT "// Made by the build.
#include <kelgen/view/internal/Page.h>

namespace kelgen::view::page {

@texts@
}  // namespace kelgen::view::page
")

file(GLOB_RECURSE view_sources CONFIGURE_DEPENDS "view/*.cpp")
kelgen_add_library(view kelgen-view KELGEN_VIEW_BUILDING SOURCES ${view_sources} DEPENDS kelgen_framework)
target_sources(kelgen_view PRIVATE "${page_source}")
target_include_directories(kelgen_view SYSTEM PRIVATE "${KELGEN_BOOST_HEADERS}")
target_link_libraries(kelgen_view PRIVATE Threads::Threads)
kelgen_add_version(kelgen_view "kelgen: the desktop in a browser")
