# Tests are compiled ten in one go: what they take from GoogleTest and the standard library is then compiled once rather than
# ten times, and that is most of it. Each stands in a namespace of its own, so that their names don't meet; the headers of all
# are read before.

set(TAVD_JOINED 10) # sources a unit

# A source that looks so would mean something else inside a namespace, and is compiled alone.
set(TAVD_ALONE "^namespace [a-z_]+ {|TYPED_TEST_SUITE|^# *(if|define)")

# As a script: cmake -DUNIT=unit.cpp -DSOURCES=a.cpp,b.cpp -P joined.cmake writes a unit.
if(CMAKE_SCRIPT_MODE_FILE)
  string(REPLACE "," ";" sources ${SOURCES})
  set(headers "")
  set(tests "")
  set(number 0)
  foreach(source ${sources})
    file(STRINGS ${source} alone REGEX ${TAVD_ALONE} LIMIT_COUNT 1)
    if(alone)
      message(FATAL_ERROR "${source} is to be compiled alone (\"${alone}\"): configure again")
    endif()
    file(STRINGS ${source} includes REGEX "^#include ")
    list(APPEND headers ${includes})
    math(EXPR number "${number} + 1")
    string(APPEND tests "namespace {\nnamespace source_${number} {\n#include \"${source}\"\n}\n}\n")
  endforeach()
  list(REMOVE_DUPLICATES headers)
  list(JOIN headers "\n" headers)
  file(CONFIGURE OUTPUT ${UNIT} CONTENT "${headers}\n\n${tests}" @ONLY)
  return()
endif()

# Sets `result` to SOURCES with the tests among them, NAME_test.cpp, replaced by units for `target`.
function(tavd_join_tests result target) # SOURCES...
  set(left "")
  set(together "")
  set(unit 0)
  foreach(source ${ARGN})
    file(REAL_PATH ${source} path)
    file(STRINGS ${path} alone REGEX ${TAVD_ALONE} LIMIT_COUNT 1)
    if(alone OR NOT source MATCHES "_test\\.cpp$")
      list(APPEND left ${source})
    else()
      list(APPEND together ${path})
    endif()
  endforeach()
  while(together)
    list(SUBLIST together 0 ${TAVD_JOINED} sources)
    list(REMOVE_ITEM together ${sources})
    math(EXPR unit "${unit} + 1")
    set(file ${CMAKE_CURRENT_BINARY_DIR}/joined/${target}_${unit}.cpp)
    string(REPLACE ";" "," names "${sources}")
    add_custom_command(OUTPUT ${file} DEPENDS ${sources} ${CMAKE_CURRENT_FUNCTION_LIST_FILE} VERBATIM
      COMMAND ${CMAKE_COMMAND} -DUNIT=${file} "-DSOURCES=${names}" -P ${CMAKE_CURRENT_FUNCTION_LIST_FILE})
    list(APPEND left ${file})
  endwhile()
  set(${result} ${left} PARENT_SCOPE)
endfunction()

# Headers beside a test are found from the units too.
function(tavd_joined_folders target) # SOURCES...
  foreach(source ${ARGN})
    file(REAL_PATH ${source} path)
    cmake_path(GET path PARENT_PATH folder)
    list(APPEND folders ${folder})
  endforeach()
  list(REMOVE_DUPLICATES folders)
  target_include_directories(${target} PRIVATE ${folders})
endfunction()
