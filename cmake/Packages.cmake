# Debian packages, one for each component of the installation; script/package makes them.
#
#   libvrelbase0.2    the library, by the number of its soname
#   libvrelbase-dev   headers, packages for CMake and pkg-config, printers for gdb
#   brivet            the driver, its format modules, the library of their SDK, its manual page and its completion
#   brivet-shape      the shape module, with the worker that links Open CASCADE; if it is built
#   brivet-dev        the SDK for format modules: headers, packages for CMake and pkg-config, brivet-describe
#   vrelbase-doc      the book and the reference; if script/docs built them
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/CompressDocuments.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/FinishPackages.cmake)
set(CPACK_PACKAGE_VENDOR VRELBase)
set(CPACK_PACKAGE_CONTACT "VRELBase maintainers <maintainers@vrelbase.example>")

# The packages by their components.
set(runtime libvrelbase${VREL_ABI_VERSION})
set(packages Runtime ${runtime} libs Development libvrelbase-dev libdevel)
if(VREL_BUILD_BRIVET)
  list(APPEND packages Brivet brivet utils BrivetDevelopment brivet-dev libdevel)
  if(BRIVET_SHAPE)
    list(APPEND packages BrivetShape brivet-shape utils)
  endif()
endif()
set(reference ${PROJECT_SOURCE_DIR}/build/doxygen/html)
option(VREL_PACKAGE_REFERENCE "Package the reference that script/docs built" OFF)
if(VREL_PACKAGE_REFERENCE)
  list(APPEND packages Documentation vrelbase-doc doc)
  set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
endif()

# Each package has a changelog and a statement of its copyright. The date of the changelog is that of the release.
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md release REGEX "^## \\[${PROJECT_VERSION}\\] - ")
string(REGEX MATCH "[0-9]+-[0-9]+-[0-9]+$" release_date "${release}")
if(NOT release_date)
  message(FATAL_ERROR "CHANGELOG.md has no line \"## [${PROJECT_VERSION}] - DATE\"")
endif()
execute_process(COMMAND env LC_ALL=C date --utc --date=${release_date} --rfc-email OUTPUT_VARIABLE release_date
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(READ ${PROJECT_SOURCE_DIR}/brivet/html/page/three-notice.txt three_notice)

set(components ${packages})
while(components)
  list(POP_FRONT components component package section)
  string(TOUPPER ${component} upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(documents ${PROJECT_BINARY_DIR}/debian/${package})
  set(notice "")
  if(package STREQUAL brivet)
    set(notice "\nThe pages that brivet writes contain three.js under this licence:\n\n${three_notice}")
  endif()
  configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in ${documents}/changelog @ONLY)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/copyright.in ${documents}/copyright @ONLY)
  # Only below /usr, so that an installation elsewhere has no folders with the names of packages.
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    continue()
  endif()
  install(FILES ${documents}/changelog ${documents}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
          COMPONENT ${component})
  if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/debian/${package}.lintian-overrides)
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/debian/${package}.lintian-overrides
            DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${package} COMPONENT ${component})
  endif()
endwhile()
if(VREL_PACKAGE_REFERENCE)
  install(DIRECTORY ${reference} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vrelbase-doc COMPONENT Documentation)
  install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vrelbase-doc
          COMPONENT Documentation)
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/debian/vrelbase-doc.doc-base DESTINATION ${CMAKE_INSTALL_DATADIR}/doc-base
          RENAME vrelbase-doc.vrelbase COMPONENT Documentation)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# Debug symbols go to packages of their own, NAME-dbgsym, if the build has some.
set(CPACK_STRIP_FILES ON)
option(VREL_PACKAGE_SYMBOLS "Make packages of debug symbols" OFF)
if(VREL_PACKAGE_SYMBOLS)
  set(CPACK_STRIP_FILES OFF)
  foreach(component RUNTIME BRIVET BRIVETDEVELOPMENT BRIVETSHAPE)
    set(CPACK_DEBIAN_${component}_DEBUGINFO_PACKAGE ON)
  endforeach()
endif()

# A component may depend on the others only by its own version.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)
set(CPACK_COMPONENT_BRIVET_DEPENDS Runtime)
set(CPACK_COMPONENT_BRIVETDEVELOPMENT_DEPENDS Brivet Development)
set(CPACK_COMPONENT_BRIVETSHAPE_DEPENDS Brivet)
foreach(component RUNTIME BRIVET BRIVETDEVELOPMENT BRIVETSHAPE)
  set(CPACK_DEBIAN_${component}_PACKAGE_SHLIBDEPS ON)
endforeach()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# What programs that are linked with a library depend on, and the request to update the cache of the loader.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/debian/triggers @ONLY NEWLINE_STYLE UNIX
     CONTENT "activate-noawait ldconfig\n")
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/debian/shlibs @ONLY NEWLINE_STYLE UNIX
     CONTENT "libVRELBase ${VREL_ABI_VERSION} ${runtime} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/shlibs ${PROJECT_BINARY_DIR}/debian/triggers)
# The same for format modules, which are linked with the library of the SDK.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/debian/brivet/shlibs @ONLY NEWLINE_STYLE UNIX
     CONTENT "libBrivetSdk ${BRIVET_SDK_VERSION} brivet (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_BRIVET_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/brivet/shlibs
                                              ${PROJECT_BINARY_DIR}/debian/triggers)

# Each description begins with the line that package lists show.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(about "VRELBase provides format modules and translation drivers with results,
counted handles, containers, strings, values and options, events and errors,
files and streams, and the names of the options that all of them share.")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "base library of a family of CAD data translators\n${about}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "base library of CAD data translators (development files)\n${about}
.
This package has the headers, and the printers that gdb loads by itself.")
set(CPACK_COMPONENT_BRIVET_DESCRIPTION "translator of STEP files to HTML, JSON, drawings and meshes
brivet summarizes ISO 10303-21 clear text files, and translates them to
interactive HTML pages, plain text, JSON, SVG drawings, glTF, STL and OBJ
meshes, and STEP files, by format modules that it loads by name.")
set(CPACK_COMPONENT_BRIVETDEVELOPMENT_DESCRIPTION "format modules for brivet (development files)
The headers, the packages for CMake and pkg-config, and the program
brivet-describe, with which format modules for brivet are built.")
set(CPACK_COMPONENT_BRIVETSHAPE_DESCRIPTION "exact shapes for brivet
Meshes the exact shapes of STEP files, and computes volumes, areas and
centroids, by Open CASCADE in a separate process.")
set(CPACK_COMPONENT_DOCUMENTATION_DESCRIPTION "base library of CAD data translators (documentation)
The book about VRELBase and brivet, and the reference of all classes, as
HTML pages.")
include(CPack)
