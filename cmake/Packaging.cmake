# Debian packages through CPack, one per install component:
#   libznutil0     the shared library (named after its SONAME)
#   libznutil-dev  headers, CMake package, pkg-config file, the .so link
#   znutil-tools   the znutil command and its manual pages
# Build them with `cpack -G DEB` in the build folder (scripts/package.sh).
set(ZNUTIL_LIBRARY_PACKAGE libznutil${PROJECT_VERSION_MAJOR})
set(ZNUTIL_PACKAGES library dev tools)
set(ZNUTIL_PACKAGE_library ${ZNUTIL_LIBRARY_PACKAGE})
set(ZNUTIL_PACKAGE_dev libznutil-dev)
set(ZNUTIL_PACKAGE_tools znutil-tools)

# Each package carries the copyright and the changelog, the latter
# compressed as Debian wants it (gzip -9n: no name, no time stamp).
set(changelog ${PROJECT_SOURCE_DIR}/cmake/debian/changelog)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
execute_process(COMMAND gzip -9nc ${changelog} OUTPUT_FILE ${PROJECT_BINARY_DIR}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN LISTS ZNUTIL_PACKAGES)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright ${PROJECT_BINARY_DIR}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${ZNUTIL_PACKAGE_${component}}
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ COMPONENT ${component})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${ZNUTIL_PACKAGE_${component}})
endforeach()

set(CPACK_PACKAGE_NAME znutil)
set(CPACK_PACKAGE_VENDOR "The ZNUTIL developers")
set(CPACK_PACKAGE_CONTACT "ZNUTIL developers <znutil@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL ${ZNUTIL_PACKAGES})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_SOURCE znutil)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "")
# Library dependencies come from the binaries themselves (dpkg-shlibdeps);
# ours are found in the build.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/znutil)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
# The loader's cache is refreshed by dpkg's trigger.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "General utility library for desktop applications and their plug-ins
Reference-counted strings, containers, a per-thread small-block allocator,
locks, events and threads, streams and binary values, typed configuration
files, a queued logger, undo history, regular expressions, and file-system,
executable-image and process services.")
set(CPACK_COMPONENT_DEV_DESCRIPTION "General utility library for desktop applications (development files)
Headers, the CMake package (find_package(znutil)) and the pkg-config file
for building against libznutil.")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Command-line tool of the znutil utility library
The znutil command: configuration files, searching text, paths,
executable version resources, processes and variables.")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEV_DEPENDS library)
set(CPACK_COMPONENT_TOOLS_DEPENDS library)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)

include(CPack)
