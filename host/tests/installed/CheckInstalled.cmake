# Installs kesview with the library into a folder, moves that elsewhere, and has it draw there.
#
#   cmake -DBUILD=... -DFOLDER=... -DBIN=bin -DSAMPLE=... -P CheckInstalled.cmake
set(installed ${FOLDER}/installed)
set(moved ${FOLDER}/moved)
set(picture ${FOLDER}/picture.png)
file(REMOVE_RECURSE ${installed} ${moved} ${picture})
foreach(component Runtime kesview)
    execute_process(
        COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${installed} --component ${component}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(RENAME ${installed} ${moved})

foreach(variable KESVIEW_READER KESVIEW_DRAWING_MODULE LD_LIBRARY_PATH)
    unset(ENV{${variable}})
endforeach()
execute_process(COMMAND ldd ${moved}/${BIN}/kesview
    OUTPUT_VARIABLE libraries COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCH "libKesVizCore[^\n]* => ([^ ]*)" line "${libraries}")
file(REAL_PATH "${CMAKE_MATCH_1}" library)
cmake_path(IS_PREFIX moved "${library}" ours)
if(NOT ours)
    message(FATAL_ERROR "The library is not the one installed:\n${libraries}")
endif()

execute_process(
    COMMAND ${moved}/${BIN}/kesview render --quiet --view iso -o ${picture} ${SAMPLE}
    COMMAND_ERROR_IS_FATAL ANY)
file(READ ${picture} signature LIMIT 8 HEX)
if(NOT signature STREQUAL "89504e470d0a1a0a")
    message(FATAL_ERROR "${picture} is no PNG.")
endif()
