# Builds a program for 32-bit Windows by the cross compiler, which has nothing to do with the one
# that builds all else, nor with its options. Without the compiler LARKSPIN_WINDOWS_COMPILER is false.
find_program(LARKSPIN_WINDOWS_COMPILER NAMES i686-w64-mingw32-g++-posix i686-w64-mingw32-g++)
mark_as_advanced(LARKSPIN_WINDOWS_COMPILER)

# The program is made of the sources, with the libraries of the system's that are named: its file is
# beside the other programs'.
function(larkspin_windows_program name)
  cmake_parse_arguments(PARSE_ARGV 1 given "" "" "SOURCES;LIBRARIES")
  set(options -std=c++20 -Os -ffunction-sections -fdata-sections -Wall -Wextra -Wshadow -Wconversion
      -DNOMINMAX -DWIN32_LEAN_AND_MEAN # less of the system's header, and of its macros
      -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/= -I${PROJECT_SOURCE_DIR}/src)
  if(LARKSPIN_WERROR)
    list(APPEND options -Werror)
  endif()
  foreach(source IN LISTS given_SOURCES)
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE path)
    string(REPLACE "/" "_" object ${path})
    set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}.dir/${object}.obj)
    add_custom_command(
      OUTPUT ${object}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/${name}.dir
      COMMAND ${CMAKE_CXX_COMPILER_LAUNCHER} ${LARKSPIN_WINDOWS_COMPILER} ${options}
              -MD -MF ${object}.d -MT ${object} -c ${source} -o ${object}
      DEPENDS ${source}
      DEPFILE ${object}.d
      COMMENT "Building ${path} for Windows"
      VERBATIM)
    list(APPEND objects ${object})
  endforeach()
  list(TRANSFORM given_LIBRARIES PREPEND -l)
  add_custom_command(
    OUTPUT ${CMAKE_BINARY_DIR}/${name}.exe
    COMMAND ${LARKSPIN_WINDOWS_COMPILER} -static -s -Wl,--gc-sections -Wl,--no-insert-timestamp
            ${objects} ${given_LIBRARIES} -o ${CMAKE_BINARY_DIR}/${name}.exe
    DEPENDS ${objects}
    COMMENT "Linking ${name}.exe"
    VERBATIM)
  add_custom_target(${name} ALL DEPENDS ${CMAKE_BINARY_DIR}/${name}.exe)
endfunction()
