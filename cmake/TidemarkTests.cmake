# How tests become entries of CTest. Labels are the names of the suites that ./test takes.
include(GoogleTest)

# Fails a run in which a filter has left no test.
set(TIDEMARK_NO_TEST_RAN "\\[==========\\] (Running )?0 tests")

# tidemark_native_suite(PROGRAM LABEL [FILTER]): one entry for each test, by its name. A test that
# hangs is ended after a time that is ample on a machine ten times as slow.
function(tidemark_native_suite program label)
    set(filter "")
    if(ARGC GREATER 2)
        set(filter TEST_FILTER "${ARGV2}")
    endif()
    gtest_discover_tests(${program} ${filter}
        DISCOVERY_MODE PRE_TEST
        TEST_LIST ${program}_${label}
        NO_PRETTY_VALUES
        PROPERTIES LABELS ${label} TIMEOUT 300)
endfunction()

# tidemark_windows_suite(SUITE PROGRAM SECONDS): one entry for the whole program, because a Windows
# program takes seconds to start under Wine. Its report, tests/reports/SUITE.xml, has each test.
function(tidemark_windows_suite suite program seconds)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        string(APPEND suite 32)
    endif()
    set(reports "${PROJECT_BINARY_DIR}/tests/reports")
    file(MAKE_DIRECTORY "${reports}")
    add_test(NAME ${suite} COMMAND ${program} --gtest_color=no --gtest_output=xml:${suite}.xml
        WORKING_DIRECTORY "${reports}")
    set_tests_properties(${suite} PROPERTIES
        LABELS ${suite} TIMEOUT ${seconds} FAIL_REGULAR_EXPRESSION "${TIDEMARK_NO_TEST_RAN}"
        RUN_SERIAL ON)
endfunction()

# tidemark_script_checks(SUITE SCRIPT SECONDS): one entry for each check that a script lists. A check
# fails with what it prints. Sets `checks` to their names.
function(tidemark_script_checks suite script seconds)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${script}")
    execute_process(COMMAND "${script}" list OUTPUT_VARIABLE checks
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "[ \n]+" ";" checks "${checks}")
    foreach(check IN LISTS checks)
        add_test(NAME ${suite}.${check} COMMAND "${script}" ${check})
        set_tests_properties(${suite}.${check} PROPERTIES LABELS ${suite} TIMEOUT ${seconds})
    endforeach()
    set(checks "${checks}" PARENT_SCOPE)
endfunction()

# tidemark_checks_in_order(SUITE SCRIPT SECONDS): the same for checks that each go on from where the
# one before it ended, the first from what the script's check `setup` makes.
function(tidemark_checks_in_order suite script seconds)
    tidemark_script_checks(${suite} "${script}" ${seconds})
    add_test(NAME ${suite}.setup COMMAND "${script}" setup)
    set_tests_properties(${suite}.setup PROPERTIES
        LABELS ${suite} TIMEOUT ${seconds} FIXTURES_SETUP ${suite})
    set(before "")
    foreach(check IN LISTS checks)
        set_tests_properties(${suite}.${check} PROPERTIES
            FIXTURES_REQUIRED ${suite} DEPENDS "${before}" RUN_SERIAL ON)
        set(before ${suite}.${check})
    endforeach()
endfunction()
