# Installs the package mensura twice and uses each copy from outside the tree:
#   <stage>/pip      pip install --target, offline, the library found through
#                    MENSURA_LIBRARY and then through the system loader
#   <stage>/prefix   cmake --install --component runtime and python: the
#                    package finds the library of its own tree, and still
#                    does when the tree is moved
#
#   cmake -DPYTHON=... -DBUILD_DIR=... -DSOURCE_DIR=... -DSTAGE=... -DLIBRARY=...
#         -DPACKAGE_DIR=lib/python3/dist-packages -P install.cmake
cmake_minimum_required(VERSION 3.20)
foreach(variable PYTHON BUILD_DIR SOURCE_DIR STAGE LIBRARY PACKAGE_DIR)
  if(NOT DEFINED ${variable})
    message(FATAL_ERROR "install.cmake needs -D${variable}=...")
  endif()
endforeach()

file(REMOVE_RECURSE ${STAGE})
file(MAKE_DIRECTORY ${STAGE})

# Converts, parses, formats and explains; prints OK when every answer is right.
set(check [=[
import os, sys
import mensura
assert mensura.convert(5.5, "ft", "m") == 1.6764000000000001, mensura.convert(5.5, "ft", "m")
assert mensura.parse("5′-6 1/2″", "in") == 66.5
assert mensura.Formatter("zh").format(5.5, "m") == "5.50 米"
assert mensura.convert([1.0, 2.0], "ft", "in").tolist() == [12.0, 24.0]
try:
    mensura.parse("1e-9 km3", "L")
    raise SystemExit("no ParseError")
except mensura.ParseError as error:
    assert error.culprit == "km3"
where = os.path.dirname(mensura.__file__)
assert where.startswith(sys.argv[1]), (where, sys.argv[1])
print("OK", mensura.library_path)
]=])
file(WRITE ${STAGE}/check.py "${check}")

function(run_check name root)
  execute_process(COMMAND ${ARGN} ${PYTHON} -S ${STAGE}/check.py ${root}
    WORKING_DIRECTORY ${STAGE} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0 OR NOT out MATCHES "^OK ")
    message(FATAL_ERROR "${name}: the installed package failed:\n${out}\n${err}")
  endif()
  message(STATUS "${name}: ${out}")
endfunction()

# -S keeps site-packages out, so add Debian's numpy and pandas back by hand.
execute_process(COMMAND ${PYTHON} -c "import numpy, os; print(os.path.dirname(os.path.dirname(numpy.__file__)))"
  OUTPUT_VARIABLE numpy_dir OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PYTHON} has no numpy: run scripts/install-deps")
endif()

# pip, from a copy of the sources so that the build leaves the tree alone.
file(COPY ${SOURCE_DIR}/python/ DESTINATION ${STAGE}/source
  PATTERN "build" EXCLUDE PATTERN "*.egg-info" EXCLUDE PATTERN "__pycache__" EXCLUDE)
execute_process(COMMAND ${PYTHON} -m pip install --no-build-isolation --no-deps --no-index
                        --disable-pip-version-check --quiet --target ${STAGE}/pip ${STAGE}/source
  RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "pip install failed:\n${out}\n${err}")
endif()
if(EXISTS ${STAGE}/pip/mensura/_library_path.py)
  message(FATAL_ERROR "pip installed the CMake install's library path")
endif()
run_check("pip, MENSURA_LIBRARY" ${STAGE}/pip
  ${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH MENSURA_LIBRARY=${LIBRARY} PYTHONPATH=${STAGE}/pip:${numpy_dir})
get_filename_component(library_dir ${LIBRARY} DIRECTORY)
run_check("pip, the system loader" ${STAGE}/pip
  ${CMAKE_COMMAND} -E env --unset=MENSURA_LIBRARY LD_LIBRARY_PATH=${library_dir} PYTHONPATH=${STAGE}/pip:${numpy_dir})

# CMake install of the library and the package.
foreach(component runtime python)
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${STAGE}/prefix
                          --component ${component}
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "cmake --install --component ${component} failed:\n${err}")
  endif()
endforeach()
if(NOT EXISTS ${STAGE}/prefix/${PACKAGE_DIR}/mensura/__init__.py
   OR NOT EXISTS ${STAGE}/prefix/${PACKAGE_DIR}/mensura/_library_path.py)
  message(FATAL_ERROR "the package is not in ${STAGE}/prefix/${PACKAGE_DIR}")
endif()
run_check("cmake --install" ${STAGE}/prefix/${PACKAGE_DIR}
  ${CMAKE_COMMAND} -E env --unset=MENSURA_LIBRARY --unset=LD_LIBRARY_PATH
  PYTHONPATH=${STAGE}/prefix/${PACKAGE_DIR}:${numpy_dir})
file(RENAME ${STAGE}/prefix ${STAGE}/moved)
run_check("cmake --install, moved" ${STAGE}/moved/${PACKAGE_DIR}
  ${CMAKE_COMMAND} -E env --unset=MENSURA_LIBRARY --unset=LD_LIBRARY_PATH
  PYTHONPATH=${STAGE}/moved/${PACKAGE_DIR}:${numpy_dir})
