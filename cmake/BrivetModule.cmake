# brivet_add_module(NAME SOURCES source... [DESTINATION folder] [COMPONENT component])
#
# Builds the format module libNAME.so from the sources, with the SDK, hidden symbols and the soname that the driver
# expects, and next to it its manifest NAME.brivet, which brivet-describe writes from the description in the module.
# Installs both in the folder, by default lib/brivet below the prefix. Set BRIVET_MODULE_INSTALL to OFF to install
# nothing.
function(brivet_add_module name)
  cmake_parse_arguments(PARSE_ARGV 1 module "" "DESTINATION;COMPONENT" "SOURCES")
  if(NOT module_SOURCES)
    message(FATAL_ERROR "brivet_add_module(${name}): no SOURCES")
  endif()
  add_library(${name} MODULE ${module_SOURCES})
  target_link_libraries(${name} PRIVATE VRELBase::BrivetSdk)
  # The driver unloads modules; g++ marks some constants so that their library stays loaded.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${name} PRIVATE -fno-gnu-unique)
  endif()
  target_link_options(${name} PRIVATE -Wl,-soname,lib${name}.so)
  set_target_properties(${name} PROPERTIES
    PREFIX lib SUFFIX .so CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    INSTALL_RPATH "$ORIGIN/..;$ORIGIN" INSTALL_RPATH_USE_LINK_PATH ON)
  add_custom_command(TARGET ${name} POST_BUILD VERBATIM
    COMMAND VRELBase::BrivetDescribe $<TARGET_FILE:${name}> $<TARGET_FILE_DIR:${name}>/${name}.brivet)
  if(NOT DEFINED BRIVET_MODULE_INSTALL OR BRIVET_MODULE_INSTALL)
    if(NOT module_DESTINATION)
      include(GNUInstallDirs)
      set(module_DESTINATION ${CMAKE_INSTALL_LIBDIR}/brivet)
    endif()
    if(module_COMPONENT)
      set(component COMPONENT ${module_COMPONENT})
    endif()
    install(TARGETS ${name} LIBRARY DESTINATION ${module_DESTINATION} ${component})
    install(FILES $<TARGET_FILE_DIR:${name}>/${name}.brivet DESTINATION ${module_DESTINATION} ${component})
  endif()
endfunction()
