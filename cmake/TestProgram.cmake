# kesvizcore_complete_test_program(name): GoogleTest, warnings and the place in ctest of a program
# of tests, a place for each of its tests unless KESVIZCORE_TESTS_BY_PROGRAM is on.
function(kesvizcore_complete_test_program name)
    target_link_libraries(${name} PRIVATE GTest::gmock GTest::gtest_main)
    target_compile_options(${name} PRIVATE ${KESVIZCORE_TEST_OPTIONS})
    set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
    kesvizcore_enable_warnings(${name})
    if(KESVIZCORE_TESTS_BY_PROGRAM)
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    else()
        gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
    endif()
endfunction()
