# The ABI of the shared library against its baseline, abi/libmensura.abi.
#
#   cmake -DMODE=check -DLIBRARY=<libmensura.so> -DHEADERS=<include/mensura>
#         -DBASELINE=<abi/libmensura.abi> -P MensuraAbi.cmake
#   cmake -DMODE=write ... -P MensuraAbi.cmake
#
# check fails on any difference that abidiff reports between the baseline and
# the library: a function or variable removed, added or changed, a public
# type whose layout moved. write records the library as the new baseline
# (the target mensura_abi_baseline). Both look at the exported interfaces and
# the types declared in the public headers alone, so that the library's
# insides may change freely. The baseline keeps the file name of each
# declaration, without folders: that is how abidiff tells the types of the
# public headers from the others.
cmake_minimum_required(VERSION 3.20)
foreach(variable MODE LIBRARY HEADERS BASELINE)
  if(NOT DEFINED ${variable})
    message(FATAL_ERROR "MensuraAbi.cmake needs -D${variable}=...")
  endif()
endforeach()

if(MODE STREQUAL "write")
  find_program(ABIDW abidw)
  if(NOT ABIDW)
    message(FATAL_ERROR "abidw is missing: install abigail-tools (scripts/install-deps)")
  endif()
  execute_process(
    COMMAND ${ABIDW} --headers-dir ${HEADERS} --drop-private-types --exported-interfaces-only
            --no-corpus-path --no-comp-dir-path --short-locs --type-id-style hash
            --drop-undefined-syms --no-elf-needed --out-file ${BASELINE} ${LIBRARY}
    RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "abidw failed (${result}) on ${LIBRARY}")
  endif()
  message(STATUS "wrote ${BASELINE} from ${LIBRARY}")
elseif(MODE STREQUAL "check")
  find_program(ABIDIFF abidiff)
  if(NOT ABIDIFF)
    message(FATAL_ERROR "abidiff is missing: install abigail-tools (scripts/install-deps)")
  endif()
  execute_process(
    COMMAND ${ABIDIFF} --headers-dir2 ${HEADERS} --drop-private-types --exported-interfaces-only
            --fail-no-debug-info --no-show-locs ${BASELINE} ${LIBRARY}
    RESULT_VARIABLE result OUTPUT_VARIABLE report ERROR_VARIABLE report)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR
      "${report}\nabidiff (status ${result}): the ABI of ${LIBRARY} is not the one of ${BASELINE}.\n"
      "If the change is meant, raise the version in project(Mensura VERSION ...) (the major\n"
      "number for a change that breaks callers, the minor one for an addition) and record\n"
      "the new ABI: cmake --build <plain build> --target mensura_abi_baseline")
  endif()
  message(STATUS "the ABI of ${LIBRARY} is the one of ${BASELINE}")
else()
  message(FATAL_ERROR "MODE is check or write, not '${MODE}'")
endif()
