# What CPack leaves undone in the packages of libraries: they stand beside those of other architectures, and dpkg's trigger
# brings the linker's cache up to date, so that no scripts need to.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  get_filename_component(name ${package} NAME)
  if(name MATCHES "^lib")
    set(folder ${CPACK_TEMPORARY_DIRECTORY}/finish/${name})
    file(MAKE_DIRECTORY ${folder})
    execute_process(COMMAND dpkg-deb -R ${package} ${folder} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${folder}/DEBIAN/postinst ${folder}/DEBIAN/postrm)
    file(READ ${folder}/DEBIAN/control control)
    file(WRITE ${folder}/DEBIAN/control "Multi-Arch: same\n${control}")
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz -b ${folder} ${package}
      OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
