# tz_install_public_headers(DESTINATION <dir> COMPONENT <component>
#                           CLASSES <class>... SEARCH <folder>...)
#
# Installs the header of every exported class found in the search folders,
# together with every header of those folders it includes, directly or
# through another one, so that an installed header never includes a header
# that is not installed. Includes that resolve outside the search folders
# (the object model's "data/TELayer.h", Qt, GDAL) come from the other
# installed packages. A class whose header is not in the tree is skipped,
# so that a panel is installed from the moment its header exists.
#
# Every exported class can also be included by its bare name
# (#include <TZRenderPanelSingleSymbol>); where the tree has no such file, a
# one-line include file is generated.
function(tz_install_public_headers)
  cmake_parse_arguments(ARG "" "DESTINATION;COMPONENT" "CLASSES;SEARCH" ${ARGN})
  set(forward_dir ${CMAKE_CURRENT_BINARY_DIR}/public-headers)
  set(queue)
  set(files)
  foreach(class IN LISTS ARG_CLASSES)
    foreach(dir IN LISTS ARG_SEARCH)
      if(EXISTS ${dir}/${class}.h)
        list(APPEND queue ${dir}/${class}.h)
        if(EXISTS ${dir}/${class})
          list(APPEND files ${dir}/${class})
        else()
          file(CONFIGURE OUTPUT ${forward_dir}/${class} CONTENT "#include \"${class}.h\"\n")
          list(APPEND files ${forward_dir}/${class})
        endif()
        break()
      endif()
    endforeach()
  endforeach()

  set(seen)
  while(queue)
    list(POP_FRONT queue header)
    if(header IN_LIST seen)
      continue()
    endif()
    list(APPEND seen ${header})
    list(APPEND files ${header})
    # A header that gains an include must be looked at again.
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
    get_filename_component(own_dir ${header} DIRECTORY)
    file(STRINGS ${header} lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(line IN LISTS lines)
      string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*\"([^\"]+)\".*" "\\1" included "${line}")
      # Quoted includes look in the including header's folder first.
      foreach(dir IN ITEMS ${own_dir} ${ARG_SEARCH})
        if(EXISTS ${dir}/${included})
          list(APPEND queue ${dir}/${included})
          break()
        endif()
      endforeach()
    endforeach()
  endwhile()

  install(FILES ${files} DESTINATION ${ARG_DESTINATION} COMPONENT ${ARG_COMPONENT})
endfunction()
