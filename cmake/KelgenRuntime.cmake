# KelgenRuntime.cmake: the libraries that a Windows program needs beside it.

# kelgen_copy_runtime(TARGET...)
# Copies every DLL that the program TARGET needs into the program's folder each time it is linked: kelgen's, those of other linked
# targets, the C++ runtime's, and what these need in turn. What is found in none of their folders is the system's own.
# Does nothing on Linux, where programs find their libraries by themselves.
function(kelgen_copy_runtime)
  if(NOT WIN32)
    return()
  endif()
  # The compiler's runtime goes before the one that kelgen was built with: it is the newer one, or the same.
  set(folders "")
  foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${dll}" OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(IS_ABSOLUTE "${path}")
      cmake_path(GET path PARENT_PATH folder)
      cmake_path(NORMAL_PATH folder)
      list(APPEND folders "${folder}")
    endif()
  endforeach()
  cmake_path(GET CMAKE_CXX_COMPILER PARENT_PATH folder)
  list(APPEND folders "${folder}")
  list(REMOVE_DUPLICATES folders)
  foreach(target IN LISTS ARGN)
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND "${CMAKE_COMMAND}" "-Dprogram=$<TARGET_FILE:${target}>" "-Dlinked=$<TARGET_RUNTIME_DLLS:${target}>"
        "-Dfolders=${folders}" "-Dobjdump=${CMAKE_OBJDUMP}" -P "${CMAKE_CURRENT_FUNCTION_LIST_FILE}"
      COMMENT "Copying the libraries of ${target}" VERBATIM)
  endforeach()
endfunction()

if(NOT CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  return()
endif()

cmake_minimum_required(VERSION 3.25)

# Run after the link: copies what PROGRAM imports, and what that imports, from the folders of LINKED and from FOLDERS.
foreach(dll IN LISTS linked)
  cmake_path(GET dll PARENT_PATH folder)
  list(APPEND linked_folders "${folder}")
endforeach()
# The runtime that kelgen was installed with lies beside it, so the compiler's folders come first.
list(APPEND folders ${linked_folders})
cmake_path(GET program PARENT_PATH destination)
set(todo "${program}")
set(seen "")
while(todo)
  list(POP_FRONT todo file)
  execute_process(COMMAND "${objdump}" -p "${file}" OUTPUT_VARIABLE headers RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${objdump} cannot read ${file}")
  endif()
  string(REGEX MATCHALL "DLL Name: [^\r\n]+" imports "${headers}")
  list(TRANSFORM imports REPLACE "DLL Name: " "")
  foreach(name IN LISTS imports)
    if(name IN_LIST seen)
      continue()
    endif()
    list(APPEND seen "${name}")
    foreach(folder IN LISTS folders)
      if(EXISTS "${folder}/${name}")
        file(COPY_FILE "${folder}/${name}" "${destination}/${name}" ONLY_IF_DIFFERENT)
        list(APPEND todo "${folder}/${name}")
        break()
      endif()
    endforeach()
  endforeach()
endwhile()
