# Run by CPack once the components are installed into its staging folders and
# before the packages are built (CPACK_PRE_BUILD_SCRIPTS in
# cmake/MensuraPackaging.cmake). For the Debian packages, gives each package
# what Debian asks of it:
#   /usr/share/doc/<package>/copyright, the MIT licence in Debian's format
#   /usr/share/doc/<package>/changelog.gz (the version has no Debian revision:
#   the packages are native)
#   README.md in the documentation folder of libmensura-dev, not LICENSE,
#   which the copyright files hold
#   manual pages compressed
#   no search path for libraries in the tool (it is for an install outside
#   the system's folders; the package puts the library where the system looks)
cmake_minimum_required(VERSION 3.20)
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

find_program(GZIP gzip REQUIRED)

# The licence text, each line after one blank, an empty line as " .".
file(STRINGS ${CPACK_MENSURA_LICENSE} licence_lines)
set(licence "")
set(started OFF)
foreach(line IN LISTS licence_lines)
  if(line MATCHES "^Permission is hereby granted")
    set(started ON)
  endif()
  if(started)
    if(line STREQUAL "")
      string(APPEND licence " .\n")
    else()
      string(APPEND licence " ${line}\n")
    endif()
  endif()
endforeach()
if(NOT started)
  message(FATAL_ERROR "${CPACK_MENSURA_LICENSE} is not the MIT licence that this script expects")
endif()
set(copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: Mensura
Upstream-Contact: ${CPACK_PACKAGE_CONTACT}

Files: *
Copyright: the Mensura developers
License: Expat
${licence}")

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog "mensura (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * Mensura ${CPACK_PACKAGE_VERSION}, packaged from its source tree.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")

# Writes text gzip-compressed, without a name or a time in the header.
function(write_gzip path text)
  file(WRITE ${path} "${text}")
  execute_process(COMMAND ${GZIP} -9nf ${path} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "gzip ${path} failed")
  endif()
endfunction()

foreach(pair IN LISTS CPACK_MENSURA_PACKAGES)
  string(REPLACE "=" ";" pair "${pair}")
  list(GET pair 0 component)
  list(GET pair 1 package)
  set(root "${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}")
  if(NOT IS_DIRECTORY "${root}")
    continue()
  endif()

  set(doc "${root}/share/doc/${package}")
  file(MAKE_DIRECTORY ${doc})
  set(installed_doc "${root}/${CPACK_MENSURA_DOCDIR}")
  if(IS_DIRECTORY "${installed_doc}" AND NOT installed_doc STREQUAL doc)
    file(REMOVE "${installed_doc}/LICENSE")
    file(GLOB documents RELATIVE "${installed_doc}" "${installed_doc}/*")
    foreach(document IN LISTS documents)
      file(RENAME "${installed_doc}/${document}" "${doc}/${document}")
    endforeach()
    file(REMOVE_RECURSE "${installed_doc}")
  endif()
  file(WRITE ${doc}/copyright "${copyright}")
  write_gzip(${doc}/changelog "${changelog}")

  file(GLOB_RECURSE pages "${root}/${CPACK_MENSURA_MANDIR}/*.[1-9]")
  foreach(page IN LISTS pages)
    execute_process(COMMAND ${GZIP} -9nf ${page} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
      message(FATAL_ERROR "gzip ${page} failed")
    endif()
  endforeach()

  file(GLOB programs "${root}/bin/*")
  foreach(program IN LISTS programs)
    file(RPATH_REMOVE FILE ${program})
  endforeach()
endforeach()
