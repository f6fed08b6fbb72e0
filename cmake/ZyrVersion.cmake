# zyr_describe(FOLDER NUMBER VERSION COMMIT): what the sources in FOLDER are. VERSION is that of the last tag vX.Y.Z, with
# the commits since then behind it (1.2.0+5.g0a1b2c3); without tags, or outside a repository of their own, the NUMBER.
# COMMIT is empty there.
function(zyr_describe folder number version commit)
  set(${version} ${number} PARENT_SCOPE)
  set(${commit} "" PARENT_SCOPE)
  execute_process(COMMAND git rev-parse --show-toplevel WORKING_DIRECTORY ${folder}
    OUTPUT_VARIABLE top OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
  if(failed OR NOT top STREQUAL folder)
    return()
  endif()
  execute_process(COMMAND git describe --always --abbrev=12 --dirty=\ with\ changes --exclude=*
    WORKING_DIRECTORY ${folder} OUTPUT_VARIABLE hash OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  set(${commit} "${hash}" PARENT_SCOPE)
  execute_process(COMMAND git describe --tags "--match=v[0-9]*" WORKING_DIRECTORY ${folder}
    OUTPUT_VARIABLE described OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
  if(NOT failed)
    string(REGEX REPLACE "^v" "" described ${described})
    string(REGEX REPLACE "-([0-9]+)-(g[0-9a-f]+)$" "+\\1.\\2" described ${described})
    set(${version} ${described} PARENT_SCOPE)
  endif()
endfunction()
