# Reads which DLLs a DLL asks for: none but those that every Windows has.
#
#   cmake -DOBJDUMP=... -DLIBRARY=... -P CheckImports.cmake
cmake_minimum_required(VERSION 3.25)
set(ofTheSystem KERNEL32.dll msvcrt.dll)

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\r\n]+" imports "${headers}")
list(TRANSFORM imports REPLACE "^DLL Name: " "")
list(REMOVE_DUPLICATES imports)
if(NOT imports)
    message(FATAL_ERROR "${OBJDUMP} finds no imports in ${LIBRARY}.")
endif()
foreach(import IN LISTS imports)
    if(NOT import IN_LIST ofTheSystem)
        message(SEND_ERROR "${LIBRARY} asks for ${import}, which no Windows has.")
    endif()
endforeach()
message("asks for ${imports}")
