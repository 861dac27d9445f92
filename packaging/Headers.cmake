# SPDX-License-Identifier: MIT

# Appends to `result` the headers of this tree that `header` includes, directly or not, and `header` itself.
function(vorlix_collect_headers result header)
  set(collected ${${result}})
  if(header IN_LIST collected)
    return()
  endif()
  list(APPEND collected ${header})
  file(STRINGS ${PROJECT_SOURCE_DIR}/${header} lines REGEX "^#[ ]*include \"")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE ".*\"(.*)\".*" "\\1" included "${line}")
    vorlix_collect_headers(collected ${included})
  endforeach()
  set(${result} ${collected} PARENT_SCOPE)
endfunction()

# vorlix_install_headers(DIR COMPONENT name ROOTS header...): the headers and all that they include, in their folders.
# Installed, they include each other by relative paths: a program may have a folder common/ of its own.
function(vorlix_install_headers dir)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "COMPONENT" "ROOTS")
  set(headers "")
  foreach(root IN LISTS arg_ROOTS)
    vorlix_collect_headers(headers ${root})
  endforeach()
  foreach(header IN LISTS headers)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${header})
    file(READ ${PROJECT_SOURCE_DIR}/${header} text)
    get_filename_component(folder ${header} DIRECTORY)
    string(REGEX REPLACE "[^/]+" ".." to_root ${folder})
    string(REGEX REPLACE "(#[ ]*include \")" "\\1${to_root}/" text "${text}")
    file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/package/include/${header} CONTENT "${text}" @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/package/include/${header}
      DESTINATION ${dir}/${folder} COMPONENT ${arg_COMPONENT})
  endforeach()
endfunction()
