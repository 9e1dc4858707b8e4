# Writes down the names that a shared library exports, mangled and sorted, one a line:
#
#   cmake -D TOOL=nm|objdump -D LIBRARY=file -D OUTPUT=file -P ListExports.cmake
#
# TOOL is nm for ELF and objdump for Windows, where the table of names is read from the DLL itself.
function(run_tool)
    execute_process(COMMAND ${TOOL} ${ARGN} ${LIBRARY}
        OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "[][;]" "" text "${text}")  # CMake's lists take them for their own
    set(text "${text}" PARENT_SCOPE)
endfunction()

if(LIBRARY MATCHES "[.]dll$")
    run_tool(-p)
    string(REGEX REPLACE ".*\nOrdinal/Name Pointer Table" "" text "${text}")
    string(REGEX MATCHALL "\n\t *[0-9]+ [^\n]+" names "${text}")
    list(TRANSFORM names REPLACE ".* " "")
else()
    run_tool(-D --defined-only --format=posix)
    string(REGEX MATCHALL "[^\n]+" names "${text}")
    list(TRANSFORM names REPLACE " .*" "")
endif()
list(SORT names)
list(JOIN names "\n" lines)
file(WRITE ${OUTPUT} "${lines}\n")
