# Debian packages by CPack, see docs/packages.md: quorin, the programs, and libquorin-dev, the library. The library is
# archives there, and the programs are linked with them: neither package needs the other.
if(QUORIN_COMPONENTS OR BUILD_SHARED_LIBS)
    return()
endif()
set(QUORIN_MAINTAINER "Les auteurs de quorin <quorin@quorin.invalid>"
    CACHE STRING "Who makes the packages, as their fields and their changelog say it")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorin)
set(CPACK_PACKAGE_CONTACT ${QUORIN_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/quorin_debian_files.cmake)

# What the script reads; CPack hands over what is called CPACK_.
set(CPACK_QUORIN_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_QUORIN_STRIP ${CMAKE_STRIP})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL programs development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# Fonts are not linked: the windows are laid out for these.
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME quorin)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_RECOMMENDS "fonts-liberation, fonts-dejavu-core")
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SUGGESTS "libquorin-dev, gtkwave")
set(CPACK_DEBIAN_PROGRAMS_DESCRIPTION "simulated glue-deposit station with its control panel
The ZK4 station is a simulated industrial workcell for teachers and students
of automation: a drawer, a press, a suction cup, two belts, three blocking
zones and a glue dispenser, with 22 sensors and 13 commands. The package has
the station, its control panel, exercises and their marking, recordings and
their replay, a command line for scripts, and a Modbus TCP server.")

# Whoever links the archives needs what they were made with: the packages that the configuration asks for by name.
set(depends "")
foreach(library IN LISTS quorin_outside_libraries)
    include(quorin_${library})
    string(REGEX REPLACE "^.*apt-get install " "" package "${quorin_${library}_missing}")
    list(APPEND depends ${package})
endforeach()
list(JOIN depends ", " depends)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libquorin-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${depends}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, pkg-config, quorin")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "library for simulated workcells and their control panels
Headers, static libraries, CMake package and pkg-config files of the library
on which the ZK4 station is built: a link by shared memory between a simulator
and its panel, sessions in real time with faults and recordings, exercises, a
paged viewer, and widgets for simulators.")
include(CPack)
