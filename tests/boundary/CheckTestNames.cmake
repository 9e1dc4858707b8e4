# Looks for every test that a page names, as in `UtilsTest.IntToStringIsDecimal`, in the sources.
#
#   cmake -DPAGE=... -DTESTS=FOLDER -P CheckTestNames.cmake
cmake_minimum_required(VERSION 3.25)

set(sources "")
file(GLOB_RECURSE files "${TESTS}/*Test.cpp")
foreach(file IN LISTS files)
    file(READ "${file}" text)
    string(REGEX REPLACE "[ \n]+" " " text "${text}")
    string(APPEND sources "${text}")
endforeach()

file(READ "${PAGE}" page)
string(REGEX MATCHALL "`[A-Za-z0-9]+Test\\.[A-Za-z0-9]+`" names "${page}")
list(LENGTH names count)
if(count EQUAL 0)
    message(FATAL_ERROR "${PAGE} names no tests.")
endif()
foreach(name IN LISTS names)
    string(REGEX REPLACE "`(.*)\\.(.*)`" "(\\1, \\2)" words "${name}")
    string(FIND "${sources}" "${words}" place)
    if(place EQUAL -1)
        message(SEND_ERROR "${PAGE}: there is no test ${name}.")
    endif()
endforeach()
message("${count} tests found")
