# What `cmake --install` puts in place, by component:
#   runtime      the shared library with its SONAME link
#   development  the development link, the public headers, the CMake package
#                (MensuraConfig.cmake, MensuraConfigVersion.cmake, the target
#                Mensura::mensura) and mensura.pc, LICENSE and README.md
#   tools        the mensura tool and its manual page
# Every folder comes from GNUInstallDirs; no file that is installed names an
# absolute path, so an installed tree can be moved.
include(CMakePackageConfigHelpers)

set(MENSURA_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Mensura)

install(TARGETS mensura EXPORT MensuraTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/mensura
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")

# The CMake package: find_package(Mensura 0.1 REQUIRED) and Mensura::mensura.
install(EXPORT MensuraTargets NAMESPACE Mensura::
  DESTINATION ${MENSURA_CMAKE_DIR} COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/MensuraConfig.cmake.in
  ${PROJECT_BINARY_DIR}/MensuraConfig.cmake
  INSTALL_DESTINATION ${MENSURA_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MensuraConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/MensuraConfig.cmake
              ${PROJECT_BINARY_DIR}/MensuraConfigVersion.cmake
  DESTINATION ${MENSURA_CMAKE_DIR} COMPONENT development)

# pkg-config: the prefix is found from the file's own place (${pcfiledir}).
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  # Folders given as absolute paths stay where they were asked to be.
  set(MENSURA_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(MENSURA_PC_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
  set(MENSURA_PC_INCLUDEDIR "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
else()
  file(RELATIVE_PATH MENSURA_PC_UP "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
  string(REGEX REPLACE "/$" "" MENSURA_PC_UP "${MENSURA_PC_UP}")
  set(MENSURA_PC_PREFIX "\${pcfiledir}/${MENSURA_PC_UP}")
  set(MENSURA_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(MENSURA_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/mensura.pc.in ${PROJECT_BINARY_DIR}/mensura.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/mensura.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)

if(MENSURA_BUILD_CLI)
  # The tool holds the library's code itself (mensura_archive): it needs
  # no library of this tree at run time.
  install(TARGETS mensura_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/docs/mensura.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endif()
