# Debian packages: one for each library, libtavd-dev for those who build on them, tavd with the program, and python3-tavd.
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${library_components} postgresql development program)
if(TARGET python_package)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "tavd maintainers <maintainers@ventilation.example>")
set(CPACK_DEBIAN_PACKAGE_SOURCE tavd)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Dependencies on other packages are read from the files, those among these packages are told: all of one version.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

function(tavd_gzip source target)
  add_custom_command(OUTPUT ${target}
    COMMAND sh -c "gzip -9nc '${CMAKE_CURRENT_SOURCE_DIR}/${source}' > '${target}'" DEPENDS ${source} VERBATIM)
endfunction()
tavd_gzip(tavd.1 tavd.1.gz)
tavd_gzip(debian/changelog changelog.gz)
add_custom_target(package_texts ALL DEPENDS tavd.1.gz changelog.gz)

# tavd_debian(COMPONENT PACKAGE SECTION SUMMARY TEXT): what the package of a component is called and says of itself.
macro(tavd_debian component package section summary text)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${text}")
  set(doc_folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
  install(FILES debian/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz DESTINATION ${doc_folder}
    COMPONENT ${component})
endmacro()

set(about "For programs in which engineers choose ventilation products: air\nterminals, dampers, fans, duct parts.")
tavd_debian(libtavd libtavd libs "calculations and diagrams of ventilation products"
"${about}
From a product's measured tables and an operating point the library
answers pressures, damper positions, sound and throw lengths, and it
draws flow diagrams, throw diagrams and dimensioned sketches.")
tavd_debian(libtavdn libtavdn libs "many operating points of ventilation products"
"${about}
This library calculates arrays of operating points in one call, with the
numbers of libtavd, for any number of threads at once.")
tavd_debian(libtavdsrv libtavdsrv libs "product database of ventilation products"
"${about}
This library keeps the products that libtavd calculates with, in a
file of SQLite.")
tavd_debian(postgresql libtavdsrv-postgresql libs "product databases on servers for libtavdsrv"
"${about}
This library lets libtavdsrv open product databases on a server of
PostgreSQL. For those in files it is not needed.")
tavd_debian(libtavdgui libtavdgui libs "drawing surfaces, windows and dialogs for libtavd"
"${about}
This library is what libtavd draws on and asks: surfaces, windows,
list boxes and message boxes without a window system.")
tavd_debian(libtavdcairo libtavdcairo libs "PNG, SVG and PDF pictures for libtavd"
"${about}
This library makes pictures of what libtavd draws.")
tavd_debian(development libtavd-dev libdevel "development files of libtavd"
"${about}
This package holds headers, documents, and what CMake and pkg-config need
to build on libtavd, its product database, its drawing surfaces and its
pictures.")
tavd_debian(program tavd science "ventilation products on the command line"
"${about}
The program tavd lists, calculates, sweeps and draws the products of a
database, and makes databases from text and checks them. A sample
catalogue comes with it.")

if(TARGET python_package)
  tavd_debian(python python3-tavd python "ventilation products in Python"
"${about}
With this package Python calculates products in arrays of NumPy, selects
them for schedules, and shows their diagrams in notebooks.")
  set(CPACK_COMPONENT_PYTHON_DEPENDS ${library_components})
  set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.11), python3-numpy")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "python3-pandas, tavd")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-dask, python3-matplotlib, jupyter-notebook")
  # Debian's Python compiles what is installed, and clears that away.
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/python/postinst
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/python/prerm)
endif()

set(CPACK_COMPONENT_LIBTAVD_DEPENDS libtavdsrv libtavdgui)
set(CPACK_COMPONENT_LIBTAVDN_DEPENDS libtavdsrv libtavdgui)
set(CPACK_COMPONENT_POSTGRESQL_DEPENDS libtavdsrv)
set(CPACK_DEBIAN_LIBTAVDSRV_PACKAGE_SUGGESTS libtavdsrv-postgresql)
set(CPACK_COMPONENT_LIBTAVDCAIRO_DEPENDS libtavdgui)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS ${library_components})
set(CPACK_COMPONENT_PROGRAM_DEPENDS ${library_components})
# Latin and Cyrillic as the drawings ask for it; Arabic and Chinese.
set(CPACK_DEBIAN_LIBTAVDCAIRO_PACKAGE_RECOMMENDS fonts-liberation)
set(CPACK_DEBIAN_LIBTAVDCAIRO_PACKAGE_SUGGESTS "fonts-dejavu-core, fonts-droid-fallback")
foreach(component IN LISTS library_components ITEMS postgresql)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers)
endforeach()
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/finish.cmake)

# Below /usr the system finds libraries by itself, and a path in the files would only lead elsewhere.
function(tavd_no_path_below_usr file component)
  install(CODE "
    if(CMAKE_INSTALL_PREFIX MATCHES \"(^|/_CPack_Packages/.*)/usr$\")
      file(RPATH_REMOVE FILE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${file}\")
    endif()" COMPONENT ${component})
endfunction()
foreach(library component IN ZIP_LISTS libraries library_components)
  tavd_no_path_below_usr(${CMAKE_INSTALL_LIBDIR}/$<TARGET_FILE_NAME:${library}> ${component})
endforeach()
tavd_no_path_below_usr(${CMAKE_INSTALL_BINDIR}/$<TARGET_FILE_NAME:tavd_host> program)

set(doc_folder ${CMAKE_INSTALL_DATAROOTDIR}/doc)
install(FILES debian/readme.md RENAME README.md DESTINATION ${doc_folder}/libtavd-dev COMPONENT development)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs DESTINATION ${doc_folder}/libtavd-dev COMPONENT development)
tavd_examples(${doc_folder}/libtavd-dev)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/catalogue DESTINATION ${doc_folder}/tavd/examples COMPONENT program)
tavd_terms_of_headers(${doc_folder}/tavd/terms)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tavd.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
