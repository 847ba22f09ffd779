# KelgenInstall.cmake: cmake --install gives headers, libraries, a CMake package, pkg-config files and documents. What of it one package or
# another holds is said by components: runtime, development, view, view_development, debug (KelgenLibrary.cmake), documentation.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
include(KelgenHeaders)

install(TARGETS kelgen_platform kelgen_framework kelgen_kelgen kelgen_main EXPORT kelgen
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
if(KELGEN_RUNTIME_DLLS)
  install(FILES ${KELGEN_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
endif()
kelgen_public_headers(headers)
foreach(header IN LISTS headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}" COMPONENT development)
endforeach()

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/kelgen")
install(EXPORT kelgen NAMESPACE kelgen:: FILE kelgenTargets.cmake DESTINATION "${package_folder}" COMPONENT development)
configure_package_config_file(cmake/kelgenConfig.cmake.in kelgenConfig.cmake INSTALL_DESTINATION "${package_folder}")
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatible SameMinorVersion)
else()
  set(compatible SameMajorVersion)
endif()
write_basic_package_version_file(kelgenConfigVersion.cmake COMPATIBILITY ${compatible})
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/kelgenConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/kelgenConfigVersion.cmake"
  cmake/KelgenResources.cmake cmake/KelgenRuntime.cmake DESTINATION "${package_folder}" COMPONENT development)
if(WIN32)
  # What a host needs to cross-compile and to run what it built.
  install(FILES cmake/mingw64.cmake DESTINATION "${package_folder}" COMPONENT development)
  install(PROGRAMS cmake/wine-run.sh cmake/wine-stop.sh DESTINATION "${package_folder}" COMPONENT development)
endif()

# How debuggers show the library's values. gdb looks beside a library for a file of its name, of the system's own libraries below a folder
# that it trusts; all printers are in one. lldb is told of its file ("command script import"), whose name it wants without dashes.
if(WIN32)
  install(FILES tools/debug/kelgen.natvis DESTINATION "${CMAKE_INSTALL_DATADIR}/kelgen" COMPONENT development)
else()
  set(printers_folder "${CMAKE_INSTALL_LIBDIR}")
  if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(printers_folder "${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}")
  endif()
  install(FILES tools/debug/kelgen-gdb.py DESTINATION "${printers_folder}" COMPONENT development
    RENAME "${CMAKE_SHARED_LIBRARY_PREFIX}kelgen${CMAKE_SHARED_LIBRARY_SUFFIX}.${PROJECT_VERSION}-gdb.py")
  install(FILES tools/debug/kelgen_lldb.py DESTINATION "${CMAKE_INSTALL_DATADIR}/kelgen" COMPONENT development)
endif()

# Where libraries and headers lie is found from the file's own place, so an installed tree may be moved.
file(RELATIVE_PATH pkgconfig_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
if(WIN32)
  set(KELGEN_MAIN_UNDEFINED "-Wl,--undefined=WinMain")
endif()
function(_kelgen_install_pkgconfig name component)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT ${component})
endfunction()
_kelgen_install_pkgconfig(kelgen development)
_kelgen_install_pkgconfig(kelgen-main development)

# kelgen::view and its headers may be left out.
if(TARGET kelgen_view)
  install(TARGETS kelgen_view EXPORT kelgenView
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT view NAMELINK_COMPONENT view_development)
  install(FILES kelgen/view/Export.h kelgen/view/Picture.h kelgen/view/View.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/kelgen/view"
    COMPONENT view_development)
  install(EXPORT kelgenView NAMESPACE kelgen:: FILE kelgenViewTargets.cmake DESTINATION "${package_folder}" COMPONENT view_development)
  _kelgen_install_pkgconfig(kelgen-view view_development)
endif()

install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documentation)
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documentation)
# The reference, where somebody has built it (target docs).
install(DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/reference/html" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documentation OPTIONAL)

if(PROJECT_IS_TOP_LEVEL)
  include(KelgenPackages)
endif()
