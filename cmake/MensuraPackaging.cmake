# Debian packages, one a component of cmake/MensuraInstall.cmake:
#   libmensura0      (runtime)      the shared library
#   libmensura-dev   (development)  headers, CMake package, pkg-config file
#   mensura-tools    (tools)        the mensura tool and its manual page
#
#   cmake -B build-deb -DCMAKE_INSTALL_PREFIX=/usr && cmake --build build-deb
#   cd build-deb && cpack -G DEB
#
# The packages install under /usr; configured for /usr, the library goes to
# the multiarch folder (lib/x86_64-linux-gnu). cmake/MensuraDebianStage.cmake
# gives each package what Debian asks of it before it is built.
set(MENSURA_PACKAGE_CONTACT "The Mensura developers <mensura@example.org>"
    CACHE STRING "Maintainer field of the Debian packages")

set(CPACK_PACKAGE_NAME mensura)
set(CPACK_PACKAGE_VENDOR "the Mensura developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${MENSURA_PACKAGE_CONTACT}")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL runtime development)
if(MENSURA_BUILD_CLI)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE mensura)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# libc6, libstdc++6 and libgcc-s1 as dpkg-shlibdeps finds them; the library
# of this build stands in for libmensura0 while the tool is looked at.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(MENSURA_RUNTIME_PACKAGE libmensura${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${MENSURA_RUNTIME_PACKAGE})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# ldconfig runs when the package comes and goes.
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "physical quantities: conversion, formatting and parsing (library)
Mensura gives engineering applications one vocabulary for physical
quantities. It converts a double between any two of 773 unit types in 68
groups, bit for bit the same on every machine; it renders a value with its
unit as text and reads such text back, including feet and inches with
fractions, degrees, minutes and seconds, and surveyor's bearings; and it
offers a catalogue of unit symbols in English and Simplified Chinese.

This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libmensura-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${MENSURA_RUNTIME_PACKAGE} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "physical quantities: conversion, formatting and parsing (development files)
Mensura gives engineering applications one vocabulary for physical
quantities: conversions between 773 unit types, rendering and reading of
values with units, and a catalogue of unit symbols in English and
Simplified Chinese.

This package holds the C++ and C headers, the CMake package (the target
Mensura::mensura) and the pkg-config file mensura.pc.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME mensura-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
    "physical quantities: conversion, formatting and parsing (command-line tool)
Mensura gives engineering applications one vocabulary for physical
quantities: conversions between 773 unit types, rendering and reading of
values with units, and a catalogue of unit symbols in English and
Simplified Chinese.

This package holds the mensura tool, which converts numbers, reads texts
such as 5 ft 6 in, renders values in either language and browses the
catalogue from the command line.")

# Read by cmake/MensuraDebianStage.cmake.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/MensuraDebianStage.cmake)
set(CPACK_MENSURA_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_MENSURA_DOCDIR ${CMAKE_INSTALL_DOCDIR})
set(CPACK_MENSURA_MANDIR ${CMAKE_INSTALL_MANDIR})
set(CPACK_MENSURA_PACKAGES runtime=${MENSURA_RUNTIME_PACKAGE} development=libmensura-dev
                           tools=mensura-tools)

include(CPack)
