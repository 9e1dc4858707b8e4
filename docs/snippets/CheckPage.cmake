# Checks that a page says what is so: its code, its output, its commands and its links.
#
#   cmake -DROOT=FOLDER -DPAGE=docs/picking.md -P CheckPage.cmake
#
# - C++ stands in a source of docs/snippets or of the minimal host, and so is compiled and run.
# - Text, and what has no language, is printed by these programs or is an answer that the tests
#   of kesview or of the debugger's views expect. Lines that begin with "$ " and names of pictures
#   are left aside, … stands for anything, and commands to gdb stand in any order.
# - Scripts and presets that are named exist, wherever they are named.
# - Links within the repository lead to a file, and to a heading where they name one. A picture
#   beside a dot file of its name is drawn from that file as it is now.
#
# Blanks and line ends do not count. The consumers of the package prove what is said in CMake's
# language, and settings are left to their readers (sh, gdb); blocks of other languages are refused.
cmake_minimum_required(VERSION 3.25)

# CMake would take these characters for the bounds, brackets and escapes of lists.
function(read_text file result)
    file(READ "${file}" text)
    string(REPLACE "\\" "<backslash>" text "${text}")
    string(REPLACE ";" "<semicolon>" text "${text}")
    string(REPLACE "[" "<open>" text "${text}")
    string(REPLACE "]" "<close>" text "${text}")
    string(REPLACE "\r" "" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

function(read_lines file result)
    read_text("${file}" text)
    string(REPLACE "\n" ";" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# --- blocks -------------------------------------------------------------------------------------

# All files that match, one behind the other, in one line.
function(read_sources result)
    set(sources "")
    file(GLOB files ${ARGN})
    foreach(file IN LISTS files)
        read_text("${file}" text)
        string(APPEND sources "${text}\n")
    endforeach()
    string(REGEX REPLACE "[ \n]+" " " sources "${sources}")
    set(${result} "${sources}" PARENT_SCOPE)
endfunction()

set(minimalHost ${ROOT}/examples/minimal_host)
read_sources(code ${ROOT}/docs/snippets/*.cpp ${minimalHost}/*.h ${minimalHost}/*.cpp)
read_sources(output ${ROOT}/docs/snippets/expected_*.txt ${minimalHost}/expected_output.txt
    ${ROOT}/host/tests/commands/golden/*.txt ${ROOT}/host/tests/commands/*.cpp
    ${ROOT}/tests/debugger/*.txt)
string(REPLACE "<backslash>\"" "\"" output "${output}")

function(check_block language block)
    if(language MATCHES "^(cmake|sh|gdb)$")
        return()
    elseif(language STREQUAL "cpp")
        set(origin "${code}")
    elseif(language MATCHES "^(text)?$")
        set(origin "${output}")
    else()
        message(SEND_ERROR "${PAGE}: a block of ${language}, which nothing checks")
        return()
    endif()
    string(REGEX REPLACE "[ \n]+" " " wanted " ${block}")
    string(REGEX REPLACE "[^ ]+[.]png" "" wanted "${wanted}")
    string(REPLACE "(gdb)" "…(gdb)" wanted "${wanted}")
    string(REPLACE "…" ";" pieces "${wanted}")
    foreach(piece IN LISTS pieces)
        string(STRIP "${piece}" piece)
        string(FIND "${origin}" "${piece}" place)
        if(place EQUAL -1)
            message(SEND_ERROR "${PAGE}: no program has or prints\n${block}")
        endif()
    endforeach()
endfunction()

# --- links --------------------------------------------------------------------------------------

# The headings of a page as a forge names them.
function(read_anchors page result)
    read_lines("${page}" lines)
    set(anchors "")
    set(inBlock FALSE)
    foreach(line IN LISTS lines)
        if(line MATCHES "^ *```")
            if(inBlock)
                set(inBlock FALSE)
            else()
                set(inBlock TRUE)
            endif()
        elseif(NOT inBlock AND line MATCHES "^#+ (.*)")
            string(TOLOWER "${CMAKE_MATCH_1}" anchor)
            string(REGEX REPLACE "[^a-z0-9 _-]" "" anchor "${anchor}")
            string(REPLACE " " "-" anchor "${anchor}")
            list(APPEND anchors "${anchor}")
        endif()
    endforeach()
    set(${result} "${anchors}" PARENT_SCOPE)
endfunction()

cmake_path(GET PAGE PARENT_PATH folder)

function(check_link target)
    if(target MATCHES "^[a-z]+:")
        return()
    endif()
    string(REGEX MATCH "^([^#]*)#?(.*)" parts "${target}")
    set(path "${CMAKE_MATCH_1}")
    set(anchor "${CMAKE_MATCH_2}")
    set(file "${ROOT}/${PAGE}")
    if(NOT path STREQUAL "")
        set(file "${ROOT}/${folder}/${path}")
    endif()
    if(NOT EXISTS "${file}")
        message(SEND_ERROR "${PAGE}: a link to ${target}, which does not exist")
        return()
    endif()
    string(REGEX REPLACE "[.]svg$" ".dot" drawing "${file}")
    if(NOT drawing STREQUAL file AND EXISTS "${drawing}")
        file(MD5 "${drawing}" sum)
        file(READ "${file}" picture LIMIT 1000)
        if(NOT picture MATCHES "${sum}")
            message(SEND_ERROR "${PAGE}: scripts/docs has not drawn ${target} since it changed")
        endif()
    elseif(NOT anchor STREQUAL "")
        read_anchors("${file}" anchors)
        if(NOT anchor IN_LIST anchors)
            message(SEND_ERROR "${PAGE}: a link to ${target}, which is no heading there")
        endif()
    endif()
endfunction()

function(check_links line)
    string(REGEX REPLACE "`[^`]*`" "" line "${line}")
    string(REGEX MATCHALL "<close>[(][^)]*[)]" links "${line}")
    foreach(link IN LISTS links)
        string(REGEX REPLACE "^<close>[(](.*)[)]$" "\\1" target "${link}")
        check_link("${target}")
    endforeach()
endfunction()

# --- commands -----------------------------------------------------------------------------------

file(READ ${ROOT}/CMakePresets.json presets)

function(check_commands line)
    string(REGEX MATCHALL "scripts/[a-z][a-z0-9-]*" scripts "${line}")
    foreach(script IN LISTS scripts)
        if(NOT EXISTS "${ROOT}/${script}")
            message(SEND_ERROR "${PAGE}: ${script} does not exist")
        endif()
    endforeach()
    string(REGEX MATCHALL "--preset [a-z]+" names "${line}")
    foreach(name IN LISTS names)
        string(REPLACE "--preset " "" name "${name}")
        if(NOT presets MATCHES "\"name\": \"${name}\"")
            message(SEND_ERROR "${PAGE}: there is no preset ${name}")
        endif()
    endforeach()
endfunction()

# --- the page -----------------------------------------------------------------------------------

read_lines("${ROOT}/${PAGE}" lines)
set(inBlock FALSE)
foreach(line IN LISTS lines)
    check_commands("${line}")
    if(inBlock AND line MATCHES "^ *```")
        check_block("${language}" "${block}")
        set(inBlock FALSE)
    elseif(inBlock)
        if(NOT line MATCHES "^[$] ")
            string(APPEND block "${line}\n")
        endif()
    elseif(line MATCHES "^ *```(.*)")
        set(language "${CMAKE_MATCH_1}")
        set(block "")
        set(inBlock TRUE)
    else()
        check_links("${line}")
    endif()
endforeach()
if(inBlock)
    message(SEND_ERROR "${PAGE}: a block that does not end")
endif()
