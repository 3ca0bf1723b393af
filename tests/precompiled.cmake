# GoogleTest's headers and the standard library's that most tests include, compiled once for all programs of tests
# rather than once a file.

# Compiles them with the target's sources, and for all that reuse them.
function(tavd_precompile target)
  target_compile_options(${target} PRIVATE -O0)
  target_precompile_headers(${target} PRIVATE
    <gmock/gmock.h> <gtest/gtest.h>
    <algorithm> <array> <cmath> <cstdint> <cstdio> <cstring> <filesystem> <fstream> <functional> <limits> <map>
    <memory> <random> <set> <sstream> <string> <vector>
    # Last: it counts the assertions of GoogleTest.
    ${CMAKE_SOURCE_DIR}/tests/support/counts.h)
endfunction()

# What is tested is built as it ships; the tests themselves are only to be built quickly. Programs take position-independent
# code like libraries, or the compiler would not accept what it has compiled for test_support.
function(tavd_precompiled_tests target)
  target_compile_options(${target} PRIVATE -O0 $<$<NOT:$<BOOL:${WIN32}>>:-fPIC>)
  target_precompile_headers(${target} REUSE_FROM test_support)
endfunction()
