include(GoogleTest)

# Pictures that tests render land here, so that a person can look at them.
set(PLUMET_TEST_OUTPUT ${CMAKE_BINARY_DIR}/test-output)
file(MAKE_DIRECTORY ${PLUMET_TEST_OUTPUT})

# The sanitizers' settings of every test. The runtime of GCC 12 takes some
# blocks of the threads' dynamic TLS for a layout that glibc gave up long ago
# and reads a wrong range from the words before them, so that its leak check
# at exit now and then crashes; without the interception the blocks are found
# as the heap allocations they are, through each thread's TLS vector.
set(PLUMET_ASAN_OPTIONS detect_leaks=1:intercept_tls_get_addr=0)

# plumet_test(NAME SOURCES a.cpp b.cpp LIBS lib1 lib2 [ENV VAR=value ...])
# One GoogleTest executable; each of its tests becomes one CTest test. Qt runs
# on the offscreen platform unless a test sets the environment itself.
function(plumet_test name)
    cmake_parse_arguments(T "" "" "SOURCES;LIBS;ENV" ${ARGN})
    add_executable(${name} ${T_SOURCES})
    target_link_libraries(${name} PRIVATE ${T_LIBS} GTest::gtest GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE
        PLUMET_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
        PLUMET_BINARY_DIR="${CMAKE_BINARY_DIR}"
        PLUMET_TEST_OUTPUT="${PLUMET_TEST_OUTPUT}")
    # The filter's files go to a folder of the test program's own, never to
    # the user's ~/.config; tests that need a fresh one make their own.
    set(env QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=${CMAKE_BINARY_DIR}/xdg-runtime
            XDG_CONFIG_HOME=${CMAKE_BINARY_DIR}/test-config/${name}
            ASAN_OPTIONS=${PLUMET_ASAN_OPTIONS} UBSAN_OPTIONS=print_stacktrace=1
            LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp ${T_ENV})
    # The environment is given through env(1) as the tests' launcher: test
    # discovery would flatten a list of variables passed as a property.
    set_property(TARGET ${name} PROPERTY CROSSCOMPILING_EMULATOR /usr/bin/env ${env})
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
                         PROPERTIES TIMEOUT 600)
endfunction()
