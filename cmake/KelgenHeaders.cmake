# KelgenHeaders.cmake: which headers a host may include. As a script (cmake -DKELGEN_PLATFORM=posix -P) it prints them.

# kelgen_public_headers(VARIABLE)
# All but internal headers and the view's, which go with its library; and of the platform the one for everything, its calls, and what
# those need: paths from the project's folder.
function(kelgen_public_headers variable)
  set(project "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/..")
  set(of_platform "Export|Win32|support/Assert|support/FormatCheck|support/SharedCount|support/WideText|${KELGEN_PLATFORM}/Windows|${KELGEN_PLATFORM}/.*/api/[^/]*|${KELGEN_PLATFORM}/resources/scripts/windows")
  if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(look_again CONFIGURE_DEPENDS)
  endif()
  file(GLOB_RECURSE headers RELATIVE "${project}" ${look_again} "${project}/kelgen/*.h")
  set(public "")
  foreach(header IN LISTS headers)
    if(header MATCHES "^kelgen/platform/(${of_platform})\\.h$" OR NOT header MATCHES "^kelgen/platform/|^kelgen/view/|/internal/")
      list(APPEND public "${header}")
    endif()
  endforeach()
  set(${variable} "${public}" PARENT_SCOPE)
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  kelgen_public_headers(headers)
  list(JOIN headers "\n" lines)
  message("${lines}")
endif()
