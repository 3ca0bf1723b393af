# The zip for Windows.
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/tavd.def ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/tavdn.def
  ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/tavdsrv.def
  DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(FILES windows.txt RENAME README.txt DESTINATION . COMPONENT development)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs ${CMAKE_SOURCE_DIR}/catalogue
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
tavd_examples(${CMAKE_INSTALL_DOCDIR})

# Terms of what others have written and the linker has put into the files: SQLite, and the compiler's own libraries.
set(terms ${CMAKE_INSTALL_DOCDIR}/terms)
install(FILES ${TAVD_SQLITE}/source/debian/copyright RENAME sqlite.txt DESTINATION ${terms} COMPONENT development)
install(FILES /usr/share/doc/mingw-w64-common/copyright RENAME mingw-w64.txt
  DESTINATION ${terms} COMPONENT development)
install(FILES /usr/share/doc/gcc-mingw-w64-base/copyright RENAME gcc.txt DESTINATION ${terms} COMPONENT development)
if(TARGET tavd_host)
  install(FILES ${CMAKE_SOURCE_DIR}/build/jsoncpp/source/debian/copyright RENAME jsoncpp.txt
    DESTINATION ${terms} COMPONENT program)
  tavd_terms_of_headers(${terms})
endif()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME tavd-${PROJECT_VERSION}-win64)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)
set(CPACK_COMPONENTS_ALL ${library_components} development program)
set(CPACK_MONOLITHIC_INSTALL ON)
