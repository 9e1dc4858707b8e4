# The warnings under which our own targets are compiled. They stay private to those targets;
# whether they are errors is the preset's choice (CMAKE_COMPILE_WARNING_AS_ERROR).
function(kesvizcore_enable_warnings target)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(${target} PRIVATE
            -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
            -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wundef)
    elseif(MSVC)
        target_compile_options(${target} PRIVATE /W4)
    endif()
endfunction()
