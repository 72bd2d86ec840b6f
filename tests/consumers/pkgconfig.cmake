# Builds the C and the C++ consumer with a plain compiler line and what
# pkg-config says for an installed Mensura, and runs them:
#   cc main.c $(pkg-config --cflags --libs mensura)
#
#   cmake -DPREFIX=... -DLIBDIR=lib -DVERSION=0.3.0 -DSOURCE_DIR=... -DBINARY_DIR=...
#         -DCC=cc -DCXX=c++ [-DSANITIZE=address,undefined] -P pkgconfig.cmake
cmake_minimum_required(VERSION 3.20)
find_program(PKG_CONFIG pkg-config)
if(NOT PKG_CONFIG)
  message(FATAL_ERROR "pkg-config is missing: scripts/install-deps installs it")
endif()
set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
unset(ENV{PKG_CONFIG_LIBDIR})

function(pkg_config output)
  execute_process(COMMAND ${PKG_CONFIG} ${ARGN} mensura RESULT_VARIABLE result
    OUTPUT_VARIABLE text ERROR_VARIABLE error OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "pkg-config ${ARGN} mensura: ${error}")
  endif()
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

pkg_config(version --modversion)
if(NOT version STREQUAL VERSION)
  message(FATAL_ERROR "pkg-config gives version ${version}, the project is ${VERSION}")
endif()
# The prefix follows the file to where the tree lies.
pkg_config(libdir --variable=libdir)
file(REAL_PATH "${libdir}" libdir)
file(REAL_PATH "${PREFIX}/${LIBDIR}" expected)
if(NOT libdir STREQUAL expected)
  message(FATAL_ERROR "pkg-config puts the library in ${libdir}, not ${expected}")
endif()
pkg_config(flags --cflags --libs)
separate_arguments(flags UNIX_COMMAND "${flags}")

set(sanitize)
if(SANITIZE)
  set(sanitize -fsanitize=${SANITIZE})
endif()
file(MAKE_DIRECTORY ${BINARY_DIR})
foreach(consumer "c;${CC};c/main.c;-std=c99;-pedantic" "cxx;${CXX};cxx/main.cpp;-std=c++17")
  list(POP_FRONT consumer name compiler source)
  set(program ${BINARY_DIR}/${name}_consumer)
  execute_process(COMMAND ${compiler} ${consumer} -Wall -Wextra -Werror ${sanitize}
                          ${SOURCE_DIR}/${source} ${flags} -Wl,-rpath,${libdir} -o ${program}
    RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${compiler} ${source} with pkg-config's flags failed")
  endif()
  execute_process(COMMAND ${program} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${program} failed: ${result}")
  endif()
endforeach()
