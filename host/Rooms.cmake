# kesview_add_room(name SOURCES source... LINK target... [PRECOMPILE header...]): the library
# kesview_<name>. What most of its sources include, and is large, is parsed once.
function(kesview_add_room name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK;PRECOMPILE")
    add_library(kesview_${name} STATIC ${arg_SOURCES})
    target_link_libraries(kesview_${name} PUBLIC ${arg_LINK})
    target_include_directories(kesview_${name} PUBLIC ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
    set_target_properties(kesview_${name} PROPERTIES
        CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
    if(arg_PRECOMPILE)
        target_precompile_headers(kesview_${name} PRIVATE ${arg_PRECOMPILE})
    endif()
    kesvizcore_enable_warnings(kesview_${name})
endfunction()
