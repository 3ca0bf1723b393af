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
