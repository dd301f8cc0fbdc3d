# Three Debian packages, one a component. scripts/package makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME wirelines)
set(CPACK_PACKAGE_VENDOR "the wirelines authors")
set(CPACK_PACKAGE_CONTACT "the wirelines authors <maintainers@wirelines.example>" CACHE STRING
    "Name and address of whoever makes the packages")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # it would come before those of the components
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development program)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# dpkg-shlibdeps finds the libraries of the program where they were built.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/modules)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libwirelines0)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "protocol decoder of a LAN analyzer (shared library)
libwirelines turns one captured Ethernet frame into display lines: the text,
the protocol, the level, a style, and exactly the bytes of the frame that the
line describes. It also classifies frames into short records.

This package holds the shared library and its two modules, for messages and
for names.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libwirelines-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "protocol decoder of a LAN analyzer (development files)
libwirelines turns one captured Ethernet frame into display lines: the text,
the protocol, the level, a style, and exactly the bytes of the frame that the
line describes. It also classifies frames into short records.

This package holds the headers, the static libraries, the CMake package and
the pkg-config file.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME wirelines)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION net)
set(CPACK_COMPONENT_PROGRAM_DEPENDS library)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "shows what the frames of a network trace say, line by line
wirelines reads traces in the pcap and pcapng formats and decodes their
frames, of LAN protocols of then and now: IP and IPv6 with their applications,
NetBIOS, SMB, IPX and NetWare, PPPoE. It lists frames, sums up traces, and
writes JSON and rows for databases.")

# What Debian wants of a package besides its files, added when they lie ready.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/finish.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/no-scripts.cmake)
set(CPACK_WIRELINES_SOURCE_DIR ${PROJECT_SOURCE_DIR})
include(CPack)
