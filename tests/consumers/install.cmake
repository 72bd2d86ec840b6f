# Installs the build tree twice, as a user and as a packager would, and checks
# what lands there:
#   <stage>/prefix                  cmake --install BUILD --prefix <stage>/prefix
#   <stage>/destdir/opt/mensura     DESTDIR=<stage>/destdir, prefix /opt/mensura
# The second tree is used where it lies, not where it was installed for: the
# consumers that use it prove that nothing in it names an absolute path.
#
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DSTAGE=... -DLIBDIR=lib
#         -DVERSION=0.3.0 -DWITH_TOOL=ON -DCONFIGURED_PREFIX=/usr/local -P install.cmake
cmake_minimum_required(VERSION 3.20)
foreach(variable BUILD_DIR SOURCE_DIR STAGE LIBDIR VERSION WITH_TOOL CONFIGURED_PREFIX)
  if(NOT DEFINED ${variable})
    message(FATAL_ERROR "install.cmake needs -D${variable}=...")
  endif()
endforeach()

file(REMOVE_RECURSE ${STAGE})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${STAGE}/prefix
  RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cmake --install --prefix failed: ${result}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E env DESTDIR=${STAGE}/destdir
                        ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix /opt/mensura
  RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "DESTDIR=... cmake --install --prefix /opt/mensura failed: ${result}")
endif()

string(REGEX MATCH "^[0-9]+" major ${VERSION})
set(expected
  ${LIBDIR}/libmensura.so.${VERSION}
  ${LIBDIR}/libmensura.so.${major}
  ${LIBDIR}/libmensura.so
  ${LIBDIR}/cmake/Mensura/MensuraConfig.cmake
  ${LIBDIR}/cmake/Mensura/MensuraConfigVersion.cmake
  ${LIBDIR}/cmake/Mensura/MensuraTargets.cmake
  ${LIBDIR}/pkgconfig/mensura.pc
  include/mensura/export.h
  include/mensura/ids.h
  include/mensura/mensura.h
  include/mensura/mensura.hpp
  share/doc/Mensura/LICENSE
  share/doc/Mensura/README.md)
if(WITH_TOOL)
  list(APPEND expected bin/mensura share/man/man1/mensura.1)
endif()

foreach(root ${STAGE}/prefix ${STAGE}/destdir/opt/mensura)
  file(GLOB_RECURSE installed LIST_DIRECTORIES false RELATIVE ${root} ${root}/*)
  foreach(file IN LISTS expected)
    if(NOT IS_SYMLINK ${root}/${file} AND NOT EXISTS ${root}/${file})
      message(FATAL_ERROR "not installed: ${root}/${file}")
    endif()
  endforeach()
  foreach(file IN LISTS installed)
    if(NOT file IN_LIST expected AND NOT file MATCHES "^${LIBDIR}/cmake/Mensura/MensuraTargets-[a-z]*\\.cmake$")
      message(FATAL_ERROR "installed beyond the list: ${root}/${file}")
    endif()
  endforeach()

  # The SONAME link and the development link.
  file(READ_SYMLINK ${root}/${LIBDIR}/libmensura.so.${major} target)
  if(NOT target STREQUAL "libmensura.so.${VERSION}")
    message(FATAL_ERROR "libmensura.so.${major} points to '${target}'")
  endif()
  file(READ_SYMLINK ${root}/${LIBDIR}/libmensura.so target)
  if(NOT target STREQUAL "libmensura.so.${major}")
    message(FATAL_ERROR "libmensura.so points to '${target}'")
  endif()

  # No file of the CMake package or pkg-config names a folder of this machine.
  file(GLOB metadata ${root}/${LIBDIR}/cmake/Mensura/*.cmake ${root}/${LIBDIR}/pkgconfig/*.pc)
  foreach(file IN LISTS metadata)
    file(READ ${file} content)
    set(paths ${STAGE} ${BUILD_DIR} ${SOURCE_DIR} /opt/mensura)
    if(NOT CONFIGURED_PREFIX MATCHES "^/(usr/?)?$")
      list(APPEND paths ${CONFIGURED_PREFIX})
    endif()
    foreach(path IN LISTS paths)
      string(FIND "${content}" "${path}" at)
      if(NOT at EQUAL -1)
        message(FATAL_ERROR "${file} names the absolute path ${path}")
      endif()
    endforeach()
  endforeach()
endforeach()

if(WITH_TOOL)
  # The installed tool runs wherever its tree stands.
  execute_process(COMMAND ${STAGE}/destdir/opt/mensura/bin/mensura convert 1 ft in
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE error)
  if(NOT result EQUAL 0 OR NOT output STREQUAL "12\n")
    message(FATAL_ERROR "the installed tool: ${result}, '${output}', ${error}")
  endif()
endif()
message(STATUS "installed twice into ${STAGE}: ${expected}")
