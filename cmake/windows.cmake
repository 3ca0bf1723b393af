# What all targets share on Windows.

# The compiler's own libraries go into each DLL, so that a host needs none of them beside it.
add_link_options(-static -static-libgcc -static-libstdc++)
# printf and its kin as C99 has them, not as the system's old C library has them.
add_compile_definitions(__USE_MINGW_ANSI_STDIO=1 _WIN32_WINNT=0x0601)

# The compiler takes it that the copy of an inline function which it has just seen is the one that is called, and keeps
# values in the registers that this copy leaves alone. On Windows the linker may choose another object's copy, compiled
# otherwise: a loop over texts then wrote behind them.
add_compile_options(-fno-ipa-ra)

# The DLL of `target` exports the named functions and nothing else. Its name carries no "lib". The list of exports and
# the import library stand beside it.
function(tavd_export target)
  get_target_property(name ${target} OUTPUT_NAME)
  if(NOT name)
    set(name ${target})
  endif()
  set(file ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name}.def)
  list(JOIN ARGN "\n  " names)
  file(CONFIGURE OUTPUT ${file} CONTENT "EXPORTS\n  @names@\n" @ONLY)
  target_sources(${target} PRIVATE ${file})
  set_target_properties(${target} PROPERTIES PREFIX "" ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endfunction()
