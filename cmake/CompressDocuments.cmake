# Compresses manual pages and changelogs, as Debian requires. CPack runs this script on the installed tree before it packs.
file(GLOB_RECURSE documents ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.[1-9] ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/changelog
     ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/CHANGELOG.md)
list(FILTER documents INCLUDE REGEX "/share/(man|doc)/")
list(FILTER documents EXCLUDE REGEX "/html/")
foreach(document IN LISTS documents)
  execute_process(COMMAND gzip -9nf ${document} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
