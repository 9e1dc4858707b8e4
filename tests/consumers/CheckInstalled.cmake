# Every public header is installed, nothing else is beside them, and no file names a folder of
# those that it must not know.
#
#   cmake -DPREFIX=... -DHEADERS=include "-DFOREIGN=folder;..." -P CheckInstalled.cmake
file(GLOB_RECURSE sources RELATIVE ${HEADERS} ${HEADERS}/*)
file(GLOB_RECURSE headers RELATIVE ${PREFIX}/include ${PREFIX}/include/*)
list(LENGTH headers count)
if(NOT headers STREQUAL sources OR count LESS 50)
    message(FATAL_ERROR "Installed are the headers\n${headers}\nand public are\n${sources}")
endif()

foreach(folder IN LISTS FOREIGN)
    execute_process(COMMAND grep -rlF -e ${folder} ${PREFIX}
        OUTPUT_VARIABLE files RESULT_VARIABLE result)
    if(NOT result EQUAL 1)
        message(FATAL_ERROR "These files name ${folder}:\n${files}")
    endif()
endforeach()
