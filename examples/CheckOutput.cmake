# Runs PROGRAM with ARGUMENTS, if there are any. It must end with status 0 and print the file EXPECTED.

execute_process(COMMAND ${PROGRAM} ${ARGUMENTS} OUTPUT_VARIABLE output RESULT_VARIABLE status)
file(READ ${EXPECTED} expected)
if(NOT status STREQUAL "0" OR NOT output STREQUAL expected)
    message(FATAL_ERROR "Status ${status}, not 0, or other output than ${EXPECTED}:\n${output}")
endif()
