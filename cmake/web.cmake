# What all targets share in the browser: WebAssembly, by Debian's emscripten.

# Its C++ library is older than the compiler's language: the header adds what is missing of it.
add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-include$<SEMICOLON>${CMAKE_SOURCE_DIR}/web/module/cxx20.h>)
# Exceptions by the machine's own instructions rather than by calls into JavaScript.
add_compile_options(-fwasm-exceptions)
add_link_options(-fwasm-exceptions)
# There is one set of instructions; the names of others in many/paths.h say nothing here.
add_compile_options(-Wno-ignored-attributes)
# Nobody replaces functions of a module: what forbids that has no use.
add_compile_options(-Wno-unused-command-line-argument)

# The headers of the standard library take the compiler longer than most sources do, so they are read once for all. What
# stands in for a compiler, such as a cache of its results, may do without.
function(tavd_read_headers_once)
  if(CMAKE_CXX_COMPILER_LAUNCHER)
    return()
  endif()
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/headers.cpp CONTENT "")
  add_library(headers OBJECT ${CMAKE_BINARY_DIR}/headers.cpp)
  target_precompile_headers(headers PRIVATE ${CMAKE_SOURCE_DIR}/web/module/cxx20.h
    <array> <filesystem> <fstream> <iostream> <map> <memory> <optional> <set> <span> <sstream> <vector>)
  # Not for tavdgui, whose quoted() would meet the standard's.
  foreach(target codepage drafts tavdcairo tavdsrv tavd_objects tavdn_objects tavd_hosts jsoncpp web_host)
    target_precompile_headers(${target} REUSE_FROM headers)
  endforeach()
endfunction()
