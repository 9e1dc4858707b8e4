# Runs a program under Wine, puts together what its calls of OutputDebugStringA show, and compares.
#
#   cmake -DPROGRAM=... -DEMULATOR=... -DEXPECTED=TEXT -P CheckDebugText.cmake
#
# TEXT and the program's text are written as Wine does: \n for a new line, \" for a quote.
cmake_minimum_required(VERSION 3.25)
set(ENV{WINEDEBUG} -all,warn+debugstr)
execute_process(COMMAND ${EMULATOR} ${PROGRAM} ERROR_VARIABLE lines RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The program ended with ${result}.\n${lines}")
endif()

string(REGEX REPLACE "[^\n]*OutputDebugStringA \"([^\n]*)\"\r?\n" "\\1" shown "${lines}")
if(NOT shown STREQUAL EXPECTED)
    message(FATAL_ERROR "---- expected\n${EXPECTED}\n---- shown\n${shown}\n----\n${lines}")
endif()
