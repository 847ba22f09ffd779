# KelgenTests.cmake: one GoogleTest program for each folder below tests/ that holds sources.

if(KELGEN_SANITIZE)
  find_program(KELGEN_SYMBOLIZER llvm-symbolizer PATHS /usr/lib/llvm-16/bin)
endif()
if(WIN32)
  # The usual linker takes five seconds of processor time for each test program, lld a tenth of one.
  find_program(KELGEN_LLD ld.lld PATHS /usr/lib/llvm-16/bin NO_DEFAULT_PATH)
endif()

# kelgen_add_test_program(FOLDER)
# Builds tests/FOLDER/*.cpp as test_FOLDER (slashes become underscores) and adds it to CTest as one entry; its report is
# reports/FOLDER.xml in the build folder. kelgen::kelgen is linked; a folder's own CMakeLists.txt may add more to it.
function(kelgen_add_test_program folder)
  string(REPLACE "/" "_" name "${folder}")
  file(GLOB sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp")
  _kelgen_unite_tests(sources "${name}")
  add_executable(test_${name} ${sources})
  target_include_directories(test_${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests" "${PROJECT_SOURCE_DIR}/tests/${folder}")
  target_link_libraries(test_${name} PRIVATE kelgen_test_support)
  target_precompile_headers(test_${name} REUSE_FROM kelgen_test_support)
  if(WIN32 AND KELGEN_LLD)
    target_link_options(test_${name} PRIVATE -fno-use-linker-plugin -wrapper "${PROJECT_SOURCE_DIR}/cmake/lld-link.sh,${KELGEN_LLD}")
  endif()
  # Wine shows the root of the file system as drive Z.
  add_test(NAME ${name}
    COMMAND test_${name} "--gtest_output=xml:$<$<BOOL:${WIN32}>:Z:>${PROJECT_BINARY_DIR}/reports/${name}.xml" --gtest_brief=1
    WORKING_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
  if(KELGEN_TESTS_LEFT_OUT)
    # The toolchain file says why.
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "GTEST_FILTER=-${KELGEN_TESTS_LEFT_OUT}")
  endif()
  if(KELGEN_SANITIZE AND KELGEN_SYMBOLIZER)
    # A sanitizer's report tells functions and lines.
    cmake_path(GET KELGEN_SYMBOLIZER PARENT_PATH folder)
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT_MODIFICATION "PATH=path_list_prepend:${folder}")
  endif()
endfunction()

# Makes few sources of many, up to KELGEN_UNITY (at most 16) of each: templates of GoogleTest and of containers are then compiled once
# for all of them. A source stays alone if it adds to a namespace or tells of its own, or makes macros, which would reach the next one.
function(_kelgen_unite_tests variable name)
  if(NOT KELGEN_UNITY GREATER 1)
    return()
  endif()
  set(most ${KELGEN_UNITY})
  if(most GREATER 16)
    set(most 16)
  endif()
  set(at_home "^( *# *(define|pragma)|namespace [a-z:]+( {)?$|template <>|extern |enum [A-Za-z]+::|.*operator new|.*anonymous namespace)")
  set(alone "")
  set(together "")
  foreach(source IN LISTS ${variable})
    file(STRINGS "${source}" wide REGEX "${at_home}" LIMIT_COUNT 1)
    if(wide)
      list(APPEND alone "${source}")
    else()
      list(APPEND together "${source}")
    endif()
  endforeach()
  if(NOT together)
    return()
  endif()
  file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/united")
  # Equal shares: the last one is not much smaller than the others.
  list(LENGTH together count)
  math(EXPR groups "(${count} + ${most} - 1) / ${most}")
  set(united "")
  foreach(group RANGE 1 ${groups})
    math(EXPR begin "${count} * (${group} - 1) / ${groups}")
    math(EXPR size "${count} * ${group} / ${groups} - ${begin}")
    list(SUBLIST together ${begin} ${size} share)
    if(size LESS 2)
      list(APPEND united ${share})
    else()
      set(file "${CMAKE_CURRENT_BINARY_DIR}/united/${name}_${group}.cpp")
      add_custom_command(OUTPUT "${file}" COMMAND awk -v "united=${file}" -f "${PROJECT_SOURCE_DIR}/cmake/unite.awk" ${share}
        DEPENDS ${share} "${PROJECT_SOURCE_DIR}/cmake/unite.awk" COMMENT "Uniting tests of ${name}" VERBATIM)
      list(APPEND united "${file}")
    endif()
  endforeach()
  set(${variable} ${alone} ${united} PARENT_SCOPE)
endfunction()

# kelgen_label_test(NAME LABEL...)
# Says what is special about a test. "threads": the thread sanitizer runs it. "desktop": on windows it shares the one mouse, focus
# and foreground window with the others so labelled, and they run one after the other. "plain": no GoogleTest program.
function(kelgen_label_test name)
  set_property(TEST ${name} APPEND PROPERTY LABELS ${ARGN})
  if(WIN32 AND "desktop" IN_LIST ARGN)
    set_property(TEST ${name} APPEND PROPERTY RESOURCE_LOCK desktop)
  endif()
endfunction()
