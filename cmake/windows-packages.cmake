# What find_package() answers elsewhere: Debian has no such packages for Windows.

# Headers alone are those of Debian's own packages, linked into a folder of their own: the rest of /usr/include is
# not for this compiler.
set(headers ${CMAKE_BINARY_DIR}/packages)
file(MAKE_DIRECTORY ${headers})
foreach(name CLI utf8 utf8.h)
  if(NOT EXISTS /usr/include/${name})
    message(FATAL_ERROR "There is no /usr/include/${name}: scripts/setup windows installs it.")
  endif()
  file(CREATE_LINK /usr/include/${name} ${headers}/${name} SYMBOLIC)
endforeach()
foreach(package CLI11::CLI11 utf8cpp)
  add_library(${package} INTERFACE IMPORTED)
  target_include_directories(${package} SYSTEM INTERFACE ${headers})
endforeach()

# JsonCpp is a part of the program. scripts/jsoncpp-source leaves it there.
set(TAVD_JSONCPP ${CMAKE_SOURCE_DIR}/build/jsoncpp CACHE PATH "Folder of JsonCpp's src and include")
set(sources ${TAVD_JSONCPP}/src)
add_library(jsoncpp STATIC ${sources}/json_reader.cpp ${sources}/json_value.cpp ${sources}/json_writer.cpp)
target_include_directories(jsoncpp SYSTEM PUBLIC ${TAVD_JSONCPP}/include)
target_compile_options(jsoncpp PRIVATE -w)
add_library(JsonCpp::JsonCpp ALIAS jsoncpp)
