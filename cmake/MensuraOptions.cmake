# Compiler options shared by every target of the project: warnings, and the
# sanitizers chosen by MENSURA_SANITIZE.
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
endfunction()
