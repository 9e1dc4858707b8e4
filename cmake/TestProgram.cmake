# What every test includes, parsed once for all test programs.
function(kesvizcore_precompile_test_headers name)
    if(NOT TARGET kesvizcore_test_headers)
        set(source ${PROJECT_BINARY_DIR}/test_headers.cpp)
        file(CONFIGURE OUTPUT ${source} CONTENT "")
        add_library(kesvizcore_test_headers OBJECT ${source})
        target_link_libraries(kesvizcore_test_headers PRIVATE GTest::gmock)
        target_compile_features(kesvizcore_test_headers PRIVATE cxx_std_17)
        target_compile_options(kesvizcore_test_headers PRIVATE ${KESVIZCORE_TEST_OPTIONS})
        set_target_properties(kesvizcore_test_headers PROPERTIES CXX_EXTENSIONS OFF)
        kesvizcore_enable_warnings(kesvizcore_test_headers)
        target_precompile_headers(kesvizcore_test_headers PRIVATE
            <gmock/gmock.h> <gtest/gtest.h>
            <algorithm> <array> <cmath> <cstdint> <functional> <map> <memory> <string> <vector>)
    endif()
    target_precompile_headers(${name} REUSE_FROM kesvizcore_test_headers)
endfunction()

# kesvizcore_complete_test_program(name): GoogleTest, warnings and the place in ctest of a program
# of tests, a place for each of its tests unless KESVIZCORE_TESTS_BY_PROGRAM is on.
function(kesvizcore_complete_test_program name)
    target_link_libraries(${name} PRIVATE GTest::gmock GTest::gtest_main)
    target_compile_options(${name} PRIVATE ${KESVIZCORE_TEST_OPTIONS})
    set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
    kesvizcore_enable_warnings(${name})
    # GoogleTest's macros leave their last argument out.
    target_compile_options(${name} PRIVATE
        $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
    kesvizcore_precompile_test_headers(${name})
    if(KESVIZCORE_TESTS_BY_PROGRAM)
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
        if(name MATCHES "_scale_tests$")
            set_tests_properties(${name} PROPERTIES COST 1000)  # the longest start first
        endif()
    else()
        gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
    endif()
endfunction()
