# Headers take the compiler far longer than what stands in a source: sources of a folder are compiled in one go. Names in
# anonymous namespaces then stand beside each other, and so must differ; one that is needed twice belongs into a header.

# Compiles SOURCES of `target` as one unit named `group`. scripts/check-tidy reads sources alone too: with
# CMAKE_UNITY_BUILD=OFF each is compiled alone.
function(tavd_compile_together target group) # SOURCES...
  if(DEFINED CMAKE_UNITY_BUILD AND NOT CMAKE_UNITY_BUILD)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  set_source_files_properties(${ARGN} PROPERTIES UNITY_GROUP ${group})
endfunction()

# The same for each of FOLDERS below the directory, without the sources that match EXCLUDE.
function(tavd_compile_folders_together target) # FOLDERS... [EXCLUDE REGEX]
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXCLUDE" "")
  foreach(folder ${arg_UNPARSED_ARGUMENTS})
    file(GLOB together ${folder}/*.cpp)
    if(arg_EXCLUDE)
      list(FILTER together EXCLUDE REGEX ${arg_EXCLUDE})
    endif()
    string(REPLACE / _ group ${folder})
    tavd_compile_together(${target} ${group} ${together})
  endforeach()
endfunction()
