# Runs `mensura_generate_reference --check` on a copy of the pages whose foot
# has another factor: the check must fail and show the line both ways.
#   cmake -DGENERATOR=... -DDOCS=docs -DSTALE=dir -P check_stale_reference.cmake
# (from the root of the source tree, where the generator reads its data)
set(line "| `0x2017` | foot | 英尺 | `MENSURA_FOOT` | 0.3048 |\n")
set(changed "| `0x2017` | foot | 英尺 | `MENSURA_FOOT` | 0.3049 |\n")
file(READ "${DOCS}/catalogue.md" text)
string(REPLACE "${line}" "${changed}" stale "${text}")
if(stale STREQUAL text)
  message(FATAL_ERROR "${DOCS}/catalogue.md has no line ${line}")
endif()
file(MAKE_DIRECTORY "${STALE}")
file(WRITE "${STALE}/catalogue.md" "${stale}")
file(COPY "${DOCS}/known-surprises.md" DESTINATION "${STALE}")

execute_process(COMMAND "${GENERATOR}" --check "${STALE}"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 1)
  message(FATAL_ERROR "the check of a stale page gave ${result}, not 1:\n${output}${errors}")
endif()
string(FIND "${output}" "-${changed}+${line}" at)
if(at EQUAL -1)
  message(FATAL_ERROR "the check of a stale page does not show the changed line:\n${output}")
endif()
string(FIND "${output}" "known-surprises.md differs" other)
if(NOT other EQUAL -1)
  message(FATAL_ERROR "the check finds a difference in the page that was not changed:\n${output}")
endif()
message(STATUS "refused, showing:\n${output}")
