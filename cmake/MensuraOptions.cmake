# Compiler options shared by every target of the project: warnings, and the
# sanitizers chosen by MENSURA_SANITIZE.

# The fuzz build (MENSURA_BUILD_FUZZ) needs libFuzzer, which comes with clang.
# It instruments every C++ target for the fuzzer's coverage, and runs under
# AddressSanitizer and UndefinedBehaviorSanitizer unless MENSURA_SANITIZE
# names others.
if(MENSURA_BUILD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "MENSURA_BUILD_FUZZ needs clang's libFuzzer: configure with "
                        "-DCMAKE_CXX_COMPILER=clang++ (and -DCMAKE_C_COMPILER=clang)")
  endif()
  if(NOT MENSURA_SANITIZE)
    set(MENSURA_SANITIZE address,undefined)
  endif()
endif()

function(mensura_target_options target)
  get_target_property(type ${target} TYPE)
  if(NOT type STREQUAL "INTERFACE_LIBRARY")
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(MENSURA_WERROR)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
  if(MENSURA_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${MENSURA_SANITIZE} -fno-omit-frame-pointer
                                             -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${MENSURA_SANITIZE})
  endif()
  if(MENSURA_BUILD_FUZZ)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fsanitize=fuzzer-no-link>)
  endif()
endfunction()
