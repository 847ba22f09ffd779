# KelgenPackages.cmake: what cpack packs, by the components of KelgenInstall.cmake. tools/package calls it.
set(KELGEN_PACKAGE_CONTACT "The developers of kelgen <kelgen@localhost>" CACHE STRING "Who answers for the packages: a name and an address")

set(CPACK_PACKAGE_NAME ${PROJECT_NAME})
set(CPACK_PACKAGE_VENDOR ${PROJECT_NAME})
set(CPACK_PACKAGE_CONTACT "${KELGEN_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_FILE_NAME "${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
string(TOLOWER "${CPACK_PACKAGE_FILE_NAME}" CPACK_PACKAGE_FILE_NAME)
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
  # One archive with everything.
  set(CPACK_GENERATOR ZIP)
  include(CPack)
  return()
endif()

set(CPACK_GENERATOR DEB TGZ)
set(CPACK_COMPONENTS_ALL runtime development documentation)
if(TARGET kelgen_view)
  list(APPEND CPACK_COMPONENTS_ALL view view_development)
endif()
if(CMAKE_BUILD_TYPE STREQUAL RelWithDebInfo)
  list(APPEND CPACK_COMPONENTS_ALL debug)
endif()

# Archives: an archive a group, each with the folder of the first one's name in it, so that they unpack into one tree.
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
foreach(component IN ITEMS runtime development documentation)
  string(TOUPPER ${component} component)
  set(CPACK_COMPONENT_${component}_GROUP whole)
endforeach()
set(CPACK_COMPONENT_VIEW_GROUP desktop)
set(CPACK_COMPONENT_VIEW_DEVELOPMENT_GROUP desktop)
set(CPACK_COMPONENT_DEBUG_GROUP symbols)
set(CPACK_ARCHIVE_WHOLE_FILE_NAME "${CPACK_PACKAGE_FILE_NAME}")
string(REPLACE "${PROJECT_NAME}-" "${PROJECT_NAME}-view-" CPACK_ARCHIVE_DESKTOP_FILE_NAME "${CPACK_PACKAGE_FILE_NAME}")
string(REPLACE "${PROJECT_NAME}-" "${PROJECT_NAME}-debug-" CPACK_ARCHIVE_SYMBOLS_FILE_NAME "${CPACK_PACKAGE_FILE_NAME}")

# Debian: a package a component.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(same_version "(= ${PROJECT_VERSION})")
set(library "libkelgen${KELGEN_INTERFACE_VERSION}")
set(view_library "libkelgen-view${KELGEN_INTERFACE_VERSION}")

# _kelgen_debian_package(COMPONENT NAME SECTION DESCRIPTION [dependencies...])
function(_kelgen_debian_package component name section description)
  string(TOUPPER ${component} component)
  list(JOIN ARGN ", " dependencies)
  set(CPACK_DEBIAN_${component}_PACKAGE_NAME "${name}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${component}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${component}_PACKAGE_DEPENDS "${dependencies}" PARENT_SCOPE)
  set(CPACK_COMPONENT_${component}_DESCRIPTION "${description}" PARENT_SCOPE)
endfunction()

_kelgen_debian_package(runtime ${library} libs "What programs need that are built with kelgen.")
_kelgen_debian_package(development libkelgen-dev libdevel "Headers, the CMake package and pkg-config files of kelgen, and printers for debuggers."
  "${library} ${same_version}")
_kelgen_debian_package(view ${view_library} libs "The windows of a program in a browser: loaded when KELGEN_VIEW asks for it."
  "${library} ${same_version}")
_kelgen_debian_package(view_development libkelgen-view-dev libdevel "Headers, the CMake package and the pkg-config file of kelgen's view."
  "libkelgen-dev ${same_version}" "${view_library} ${same_version}")
_kelgen_debian_package(debug libkelgen-dbg debug "What debuggers need beyond the libraries of kelgen, where they look for it."
  "${library} ${same_version}")
_kelgen_debian_package(documentation kelgen-doc doc "The documents of kelgen and the reference of its classes.")
# kelgen_add_resources compiles scripts with it.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "binutils-mingw-w64-x86-64")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
# What of the system they need, dpkg-shlibdeps finds; it looks for kelgen's own libraries among those that were built.
foreach(component IN ITEMS RUNTIME VIEW)
  set(CPACK_DEBIAN_${component}_PACKAGE_SHLIBDEPS ON)
endforeach()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
# What is built with the packages gets a dependency on the libraries' own.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# Each generator reads this first.
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/packages/Grouping.cmake" [=[
if(CPACK_GENERATOR STREQUAL DEB)
  set(CPACK_COMPONENTS_GROUPING IGNORE)
else()
  set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
]=])
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_BINARY_DIR}/packages/Grouping.cmake")
include(CPack)
