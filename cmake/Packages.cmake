# Debian packages, one for each component of the installation; script/package makes them.
#
#   libvrelbase0      the library, by the number of its soname
#   libvrelbase-dev   headers, packages for CMake and pkg-config, printers for gdb
#   brivet            the driver, its format modules, the library of their SDK, its manual page and its completion
#   brivet-shape      the shape module, with the worker that links Open CASCADE; if it is built
#   brivet-dev        the SDK for format modules: headers, packages for CMake and pkg-config, brivet-describe
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/CompressManual.cmake)
set(CPACK_PACKAGE_VENDOR VRELBase)
set(CPACK_PACKAGE_CONTACT "VRELBase maintainers <maintainers@vrelbase.example>")
set(CPACK_COMPONENTS_ALL Runtime Development)
if(VREL_BUILD_BRIVET)
  list(APPEND CPACK_COMPONENTS_ALL Brivet BrivetDevelopment)
  if(TARGET BrivetShape)
    list(APPEND CPACK_COMPONENTS_ALL BrivetShape)
  endif()
endif()

set(runtime libvrelbase${PROJECT_VERSION_MAJOR})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvrelbase-dev)
set(CPACK_DEBIAN_BRIVET_PACKAGE_NAME brivet)
set(CPACK_DEBIAN_BRIVETDEVELOPMENT_PACKAGE_NAME brivet-dev)
set(CPACK_DEBIAN_BRIVETSHAPE_PACKAGE_NAME brivet-shape)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_BRIVET_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_BRIVETDEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_BRIVETSHAPE_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# dpkg-shlibdeps finds libraries in their packages; the project's own library, which is in none yet, in the build folder.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)
set(CPACK_COMPONENT_BRIVET_DEPENDS Runtime)
set(CPACK_COMPONENT_BRIVETDEVELOPMENT_DEPENDS Brivet Development)
set(CPACK_COMPONENT_BRIVETSHAPE_DEPENDS Brivet)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_BRIVET_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_BRIVETDEVELOPMENT_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_BRIVETSHAPE_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# The first version of the library that a linked program can use. Before 1.0 a new minor version may change the ABI.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/debian/shlibs @ONLY NEWLINE_STYLE UNIX
     CONTENT "libVRELBase ${PROJECT_VERSION_MAJOR} ${runtime} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/shlibs)
# The same for format modules, which are linked with the library of the SDK.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/debian/brivet/shlibs @ONLY NEWLINE_STYLE UNIX
     CONTENT "libBrivetSdk ${BRIVET_SDK_VERSION} brivet (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_BRIVET_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/brivet/shlibs)

# Each description begins with the line that package lists show.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(about "VRELBase provides format modules and translation drivers with results, counted
handles, containers, strings, values and options, events and errors, files and streams,
and the names of the options that all of them share.")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "base library of a family of CAD data translators\n${about}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "base library of CAD data translators (development files)\n${about}
.
This package has the headers, and the printers that gdb loads by itself.")
set(CPACK_COMPONENT_BRIVET_DESCRIPTION "translator of STEP files to HTML pages, text and STEP
brivet translates ISO 10303-21 clear text files to HTML pages, plain text and
STEP files, by format modules that it loads by name, and lists file headers.")
set(CPACK_COMPONENT_BRIVETDEVELOPMENT_DESCRIPTION "format modules for brivet (development files)
The headers, the packages for CMake and pkg-config, and the program
brivet-describe, with which format modules for brivet are built.")
set(CPACK_COMPONENT_BRIVETSHAPE_DESCRIPTION "exact shapes for brivet
Meshes the exact shapes of STEP files, and computes volumes, areas and
centroids, by Open CASCADE in a separate process.")
include(CPack)
