# Packs each package again, so that the same files give the same package: with the time of the release for everything that
# is newer, which dpkg-deb takes from SOURCE_DATE_EPOCH, and without the scripts that CPack adds to call ldconfig, for which
# the package has a trigger. The checksums are computed again: CPack lists them in the order of the folder, and those of
# debug symbols with the path of the build folder. The documents of a package of debug symbols are those of its package.
# CPack runs this script on the packages that it wrote.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree ${CPACK_TEMPORARY_DIRECTORY}/finish)
  file(REMOVE_RECURSE ${tree})
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
  cmake_path(GET package FILENAME name)
  if(name MATCHES "^((.*)-dbgsym)_")
    file(MAKE_DIRECTORY ${tree}/usr/share/doc)
    file(CREATE_LINK ${CMAKE_MATCH_2} ${tree}/usr/share/doc/${CMAKE_MATCH_1} SYMBOLIC)
    file(GLOB_RECURSE symbols ${tree}/usr/lib/debug/*.debug)
    file(CHMOD ${symbols} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  endif()
  execute_process(COMMAND sh -c "LC_ALL=C; export LC_ALL
                                 find . -path ./DEBIAN -prune -o -type f -printf '%P\\0' | sort -z |
                                 xargs -0 md5sum >DEBIAN/md5sums"
                  WORKING_DIRECTORY ${tree} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND dpkg-deb -Zxz --root-owner-group --build ${tree} ${package} OUTPUT_QUIET
                  COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${tree})
endforeach()
