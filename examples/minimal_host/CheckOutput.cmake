# Runs a program and compares all that it prints with a file, line ends aside.
#
#   cmake -DPROGRAM=... -DEXPECTED=... [-DEMULATOR=...] -P CheckOutput.cmake
execute_process(
    COMMAND ${EMULATOR} ${PROGRAM}
    OUTPUT_VARIABLE actual
    ERROR_VARIABLE errors
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The program ended with ${result}.\n${errors}")
endif()

file(READ "${EXPECTED}" expected)
foreach(text actual expected)
    string(REPLACE "\r\n" "\n" ${text} "${${text}}")
endforeach()
if(NOT actual STREQUAL expected)
    message("---- expected\n${expected}\n---- actual\n${actual}\n----")
    message(FATAL_ERROR "The output is not that of ${EXPECTED}.")
endif()
