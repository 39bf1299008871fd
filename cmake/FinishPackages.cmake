# Packs each package again, so that the same files give the same package: with the time of the release for everything that
# is newer, which dpkg-deb takes from SOURCE_DATE_EPOCH, and without the scripts that CPack adds to call ldconfig, for which
# the package has a trigger. CPack runs this script on the packages that it wrote.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree ${CPACK_TEMPORARY_DIRECTORY}/finish)
  file(REMOVE_RECURSE ${tree})
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
  # CPack lists the files in the order of the folder.
  file(STRINGS ${tree}/DEBIAN/md5sums sums)
  list(SORT sums)
  list(JOIN sums "\n" sums)
  file(WRITE ${tree}/DEBIAN/md5sums "${sums}\n")
  execute_process(COMMAND dpkg-deb -Zxz --root-owner-group --build ${tree} ${package} OUTPUT_QUIET
                  COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${tree})
endforeach()
