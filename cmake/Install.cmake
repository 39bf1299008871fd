# The files that `cmake --install` installs: the library with its versioned names, its headers in one folder
# include/VRELBase, the package descriptions for find_package and pkg-config, the gdb printers; and the manual page and
# the completion of the driver.
include(CMakePackageConfigHelpers)

install(TARGETS VRELBase EXPORT VRELBaseTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development)
get_target_property(public_headers VRELBase VREL_PUBLIC_HEADERS)
install(FILES ${public_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VRELBase COMPONENT Development)
get_target_property(detail_headers VRELBase VREL_DETAIL_HEADERS)
install(FILES ${detail_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VRELBase/detail COMPONENT Development)

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/VRELBase)
install(EXPORT VRELBaseTargets NAMESPACE VRELBase:: DESTINATION ${package_directory} COMPONENT Development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/VRELBaseConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/VRELBaseConfig.cmake INSTALL_DESTINATION ${package_directory})
# Before 1.0 a new minor version may change the API.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VRELBaseConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VRELBaseConfig.cmake ${PROJECT_BINARY_DIR}/VRELBaseConfigVersion.cmake
        DESTINATION ${package_directory} COMPONENT Development)

# The pkg-config file derives the prefix from its own path, so that an installed tree can be moved, unless the folders
# were given as absolute paths.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(VREL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(VREL_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
else()
  file(RELATIVE_PATH VREL_PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  string(REGEX REPLACE "/$" "" VREL_PC_PREFIX "\${pcfiledir}/${VREL_PC_PREFIX}")
  set(VREL_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(VREL_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(VREL_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/VRELBase.pc.in ${PROJECT_BINARY_DIR}/VRELBase.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/VRELBase.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)

# gdb loads the printers with the library: from a folder of its own if the library is below /usr, else from the folder of
# the library, if the user trusts that folder.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(printers_directory ${CMAKE_INSTALL_DATADIR}/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR})
else()
  set(printers_directory ${CMAKE_INSTALL_LIBDIR})
endif()
install(FILES tools/gdb/vrelbase_printers.py DESTINATION ${printers_directory} COMPONENT Development
        RENAME $<TARGET_FILE_NAME:VRELBase>-gdb.py)

if(VREL_BUILD_BRIVET)
  install(FILES docs/man/brivet.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Brivet)
  install(FILES completions/brivet DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT Brivet)
  install(FILES completions/_brivet DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT Brivet)
  install(FILES completions/brivet.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT Brivet)
endif()
