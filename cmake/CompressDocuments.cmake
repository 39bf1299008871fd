# Compresses manual pages, as Debian requires. CPack runs this script on the installed tree before it packs.
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.[1-9])
list(FILTER pages INCLUDE REGEX "/share/man/")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9nf ${page} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
