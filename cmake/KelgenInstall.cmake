# KelgenInstall.cmake: cmake --install gives headers, libraries, a CMake package and pkg-config files.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
include(KelgenHeaders)

install(TARGETS kelgen_platform kelgen_framework kelgen_kelgen kelgen_main EXPORT kelgen
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
if(KELGEN_RUNTIME_DLLS)
  install(FILES ${KELGEN_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
kelgen_public_headers(headers)
foreach(header IN LISTS headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}")
endforeach()

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/kelgen")
install(EXPORT kelgen NAMESPACE kelgen:: FILE kelgenTargets.cmake DESTINATION "${package_folder}")
configure_package_config_file(cmake/kelgenConfig.cmake.in kelgenConfig.cmake INSTALL_DESTINATION "${package_folder}")
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatible SameMinorVersion)
else()
  set(compatible SameMajorVersion)
endif()
write_basic_package_version_file(kelgenConfigVersion.cmake COMPATIBILITY ${compatible})
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/kelgenConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/kelgenConfigVersion.cmake"
  cmake/KelgenResources.cmake cmake/KelgenRuntime.cmake DESTINATION "${package_folder}")
if(WIN32)
  # What a host needs to cross-compile and to run what it built.
  install(FILES cmake/mingw64.cmake DESTINATION "${package_folder}")
  install(PROGRAMS cmake/wine-run.sh cmake/wine-stop.sh DESTINATION "${package_folder}")
endif()

# kelgen::view and its headers are a component that may be left out.
if(TARGET kelgen_view)
  install(TARGETS kelgen_view EXPORT kelgenView LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT view)
  install(FILES kelgen/view/Export.h kelgen/view/Picture.h kelgen/view/View.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/kelgen/view"
    COMPONENT view)
  install(EXPORT kelgenView NAMESPACE kelgen:: FILE kelgenViewTargets.cmake DESTINATION "${package_folder}" COMPONENT view)
endif()

# How debuggers show the library's values. gdb looks beside a library for a file of its name; all printers are in one. lldb is told of
# its file ("command script import"), whose name it wants without dashes.
if(WIN32)
  install(FILES tools/debug/kelgen.natvis DESTINATION "${CMAKE_INSTALL_DATADIR}/kelgen")
else()
  install(FILES tools/debug/kelgen-gdb.py DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    RENAME "${CMAKE_SHARED_LIBRARY_PREFIX}kelgen${CMAKE_SHARED_LIBRARY_SUFFIX}.${PROJECT_VERSION}-gdb.py")
  install(FILES tools/debug/kelgen_lldb.py DESTINATION "${CMAKE_INSTALL_DATADIR}/kelgen")
endif()

# Where libraries and headers lie is found from the file's own place, so an installed tree may be moved.
file(RELATIVE_PATH pkgconfig_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
if(WIN32)
  set(KELGEN_MAIN_UNDEFINED "-Wl,--undefined=WinMain")
endif()
configure_file(cmake/kelgen.pc.in kelgen.pc @ONLY)
configure_file(cmake/kelgen-main.pc.in kelgen-main.pc @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/kelgen.pc" "${CMAKE_CURRENT_BINARY_DIR}/kelgen-main.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
