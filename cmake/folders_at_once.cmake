# Compiles the sources of a target by folder, several in one go: most of the compiler's time goes
# into reading the same headers anew for each. Names in anonymous namespaces are therefore unique
# in a folder. Sources that can't stand beside others say SKIP_UNITY_BUILD_INCLUSION.
#
# So many lines go together: more would leave one of two cores idle at the end, and take longer to
# build anew after a change.
set(LARKSPIN_LINES_AT_ONCE 1500)

function(larkspin_compile_folders_at_once target)
  if(NOT LARKSPIN_UNITY)
    return()
  endif()
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  set(number 0)
  foreach(source IN LISTS sources)
    get_filename_component(path ${source} ABSOLUTE)
    get_filename_component(folder ${path} DIRECTORY)
    file(STRINGS ${path} lines)
    list(LENGTH lines length)
    if(NOT folder STREQUAL last_folder OR filled GREATER LARKSPIN_LINES_AT_ONCE)
      math(EXPR number "${number} + 1")
      set(filled 0)
      set(last_folder ${folder})
    endif()
    math(EXPR filled "${filled} + ${length}")
    get_filename_component(name ${folder} NAME)
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP "${name}_${number}")
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  # A local may be called like something of a neighbour's: scripts/check-plain asks about its own file.
  target_compile_options(${target} PRIVATE -Wno-shadow)
endfunction()
