# The tests of one folder are one GoogleTest program, listed test by test in CTest.

include(GoogleTest)

# kv_add_tests(NAME SOURCES file... LINKS target...)
function(kv_add_tests name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(kv_tests_${name} ${arg_SOURCES})
    target_link_libraries(kv_tests_${name} PRIVATE ${arg_LINKS} GTest::gtest_main)
    kv_own_target(kv_tests_${name})
    gtest_discover_tests(kv_tests_${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
