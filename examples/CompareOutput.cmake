# cmake -DPROGRAM=... -DARGUMENTS=... -DEXPECTED=... -P CompareOutput.cmake
# Runs a program, which must end with 0 and print the text of a file and nothing on standard error.
execute_process(
    COMMAND ${PROGRAM} ${ARGUMENTS}
    RESULT_VARIABLE status
    OUTPUT_VARIABLE output
    ERROR_VARIABLE errors)
file(READ ${EXPECTED} expected)
if(NOT status EQUAL 0 OR NOT errors STREQUAL "" OR NOT output STREQUAL expected)
    message(FATAL_ERROR "status ${status}, standard error:\n${errors}\nstandard output:\n${output}")
endif()
