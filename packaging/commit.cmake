# cmake -DSOURCE=FOLDER -DTEMPLATE=FILE -DOUTPUT=FILE -P commit.cmake
# Fills the commit of the source into a template: git's, else what an archive of git has put into the file
# COMMIT, else nothing. The output is written only when it changes.
execute_process(COMMAND git -C ${SOURCE} rev-parse --show-toplevel
                OUTPUT_VARIABLE top OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE status)
set(COMMIT)
file(REAL_PATH ${SOURCE} source)
if(status EQUAL 0 AND top STREQUAL source) # not a repository around an unpacked archive
  execute_process(COMMAND git -C ${SOURCE} rev-parse --short=7 HEAD
                  OUTPUT_VARIABLE COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  execute_process(COMMAND git -C ${SOURCE} diff --quiet HEAD -- src RESULT_VARIABLE changed ERROR_QUIET)
  if(COMMIT AND changed EQUAL 1)
    string(APPEND COMMIT "+")
  endif()
elseif(EXISTS ${SOURCE}/COMMIT)
  file(STRINGS ${SOURCE}/COMMIT COMMIT LIMIT_COUNT 1)
  if(NOT COMMIT MATCHES "^[0-9a-f]+$")
    set(COMMIT)
  endif()
endif()
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
