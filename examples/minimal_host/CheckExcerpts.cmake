# Looks for every C++ excerpt of a Markdown file in sources, blanks and line ends aside.
#
#   cmake -DGUIDE=... -DSOURCES=FOLDER -P CheckExcerpts.cmake

# CMake would take these characters for the bounds and brackets of lists.
function(read_as_one_line file result)
    file(READ "${file}" text)
    string(REPLACE ";" "<semicolon>" text "${text}")
    string(REPLACE "[" "<open>" text "${text}")
    string(REPLACE "]" "<close>" text "${text}")
    string(REGEX REPLACE "[ \r\n]+" " " text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

set(allSources "")
file(GLOB sourceFiles "${SOURCES}/*.h" "${SOURCES}/*.cpp")
foreach(file IN LISTS sourceFiles)
    read_as_one_line("${file}" text)
    string(APPEND allSources "${text}")
endforeach()

read_as_one_line("${GUIDE}" guide)
string(REGEX MATCHALL "```cpp [^`]*```" excerpts "${guide}")
list(LENGTH excerpts count)
if(count EQUAL 0)
    message(FATAL_ERROR "${GUIDE} has no excerpts.")
endif()
foreach(excerpt IN LISTS excerpts)
    string(REGEX REPLACE "^```cpp (.*) ```$" "\\1" excerpt "${excerpt}")
    string(FIND "${allSources}" "${excerpt}" place)
    if(place EQUAL -1)
        message(SEND_ERROR "Not in ${SOURCES}:\n${excerpt}")
    endif()
endforeach()
message("${count} excerpts found")
