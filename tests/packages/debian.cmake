# Builds the Debian packages with cpack -G DEB into a folder of its own and
# checks them: their names, sections and dependencies, the files each holds,
# and that lintian finds no error in them (its warnings are printed).
#
#   cmake -DCONFIG=<build>/CPackConfig.cmake -DOUT=<folder> -DVERSION=0.3.0
#         -DLIBDIR=lib -DWITH_TOOL=ON -P debian.cmake
cmake_minimum_required(VERSION 3.20)
foreach(variable CONFIG OUT VERSION LIBDIR WITH_TOOL)
  if(NOT DEFINED ${variable})
    message(FATAL_ERROR "debian.cmake needs -D${variable}=...")
  endif()
endforeach()
foreach(program cpack dpkg-deb lintian)
  string(MAKE_C_IDENTIFIER ${program} name)
  find_program(${name} ${program})
  if(NOT ${name})
    message(FATAL_ERROR "${program} is missing: scripts/install-deps installs it")
  endif()
endforeach()

file(REMOVE_RECURSE ${OUT})
execute_process(COMMAND ${cpack} -G DEB --config ${CONFIG} -B ${OUT}
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "cpack -G DEB failed:\n${output}")
endif()

string(REGEX MATCH "^[0-9]+" major ${VERSION})
execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE architecture
  OUTPUT_STRIP_TRAILING_WHITESPACE)
set(runtime libmensura${major})

# package;section;a dependency it must have;files it must hold
set(packages
  "${runtime}|libs|libstdc\\+\\+6|usr/${LIBDIR}/libmensura.so.${VERSION},usr/${LIBDIR}/libmensura.so.${major}"
  "libmensura-dev|libdevel|${runtime} \\(= ${VERSION}\\)|usr/${LIBDIR}/libmensura.so,usr/include/mensura/mensura.hpp,usr/include/mensura/mensura.h,usr/include/mensura/ids.h,usr/include/mensura/export.h,usr/${LIBDIR}/cmake/Mensura/MensuraConfig.cmake,usr/${LIBDIR}/cmake/Mensura/MensuraConfigVersion.cmake,usr/${LIBDIR}/cmake/Mensura/MensuraTargets.cmake,usr/${LIBDIR}/pkgconfig/mensura.pc,usr/share/doc/libmensura-dev/README.md")
if(WITH_TOOL)
  list(APPEND packages
    "mensura-tools|utils|libc6|usr/bin/mensura,usr/share/man/man1/mensura.1.gz")
endif()

set(debs)
foreach(entry IN LISTS packages)
  string(REPLACE "|" ";" entry "${entry}")
  list(GET entry 0 package)
  list(GET entry 1 section)
  list(GET entry 2 dependency)
  list(GET entry 3 files)
  string(REPLACE "," ";" files "${files}")
  list(APPEND files usr/share/doc/${package}/copyright usr/share/doc/${package}/changelog.gz)

  set(deb ${OUT}/${package}_${VERSION}_${architecture}.deb)
  if(NOT EXISTS ${deb})
    message(FATAL_ERROR "cpack made no ${deb}")
  endif()
  list(APPEND debs ${deb})
  execute_process(COMMAND ${dpkg_deb} --field ${deb} Section Depends Description
    OUTPUT_VARIABLE fields)
  if(NOT fields MATCHES "Section: ${section}\n")
    message(FATAL_ERROR "${package} is not in section ${section}:\n${fields}")
  endif()
  if(NOT fields MATCHES "Depends: [^\n]*${dependency}")
    message(FATAL_ERROR "${package} does not depend on ${dependency}:\n${fields}")
  endif()
  if(NOT fields MATCHES "Description: [^\n]+\n [^\n]+")
    message(FATAL_ERROR "${package} lacks a summary and a description:\n${fields}")
  endif()
  execute_process(COMMAND ${dpkg_deb} --contents ${deb} OUTPUT_VARIABLE contents)
  foreach(file IN LISTS files)
    string(REGEX REPLACE "([.+])" "\\\\\\1" pattern "${file}")
    if(NOT contents MATCHES " \\./${pattern}( -> [^\n]*)?\n")
      message(FATAL_ERROR "${package} does not hold /${file}:\n${contents}")
    endif()
  endforeach()
endforeach()

execute_process(COMMAND ${lintian} --fail-on error --tag-display-limit 0 ${debs}
  RESULT_VARIABLE result OUTPUT_VARIABLE report ERROR_VARIABLE errors)
message("${report}")
if(NOT result EQUAL 0)
  message(FATAL_ERROR "lintian finds errors (${result}): ${errors}")
endif()
list(LENGTH debs count)
message(STATUS "${count} packages, no lintian error")
