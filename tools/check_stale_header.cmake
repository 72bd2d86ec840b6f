# Runs `mensura_generate_ids --check` on a copy of the named ids whose foot has
# the inch's id: the check must fail and show the line both ways.
#   cmake -DGENERATOR=... -DHEADER=include/mensura/ids.h -DSTALE=out.h -P check_stale_header.cmake
file(READ "${HEADER}" text)
string(REPLACE "    MENSURA_FOOT = 0x2017,\n" "    MENSURA_FOOT = 0x2016,\n" stale "${text}")
if(stale STREQUAL text)
  message(FATAL_ERROR "${HEADER} has no line \"    MENSURA_FOOT = 0x2017,\" to change")
endif()
file(WRITE "${STALE}" "${stale}")

execute_process(COMMAND "${GENERATOR}" --check "${STALE}"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 1)
  message(FATAL_ERROR "the check of a stale header gave ${result}, not 1:\n${output}${errors}")
endif()
string(FIND "${output}" "-    MENSURA_FOOT = 0x2016,\n+    MENSURA_FOOT = 0x2017,\n" at)
if(at EQUAL -1)
  message(FATAL_ERROR "the check of a stale header does not show the changed line:\n${output}")
endif()
string(FIND "${output}" "@@ -" hunk)
if(hunk EQUAL -1)
  message(FATAL_ERROR "the check of a stale header shows no hunk:\n${output}")
endif()
message(STATUS "refused, showing:\n${output}")
