# quorin_test(NAME SOURCES a.cpp... [LINKS target...] [ARGS argument...] [LABELS label...]
#             [INSIDE folder/source.cpp...] [DISPLAY] [SCREEN size] [SERIAL] [LOCALES | LOCALES_IN_CI])
#
# One GoogleTest program, tests_NAME, run whole as the CTest test NAME.
#   DISPLAY  runs it on a virtual display of its own with a window manager (tools/with_display)
#   SCREEN   gives that display another size, "1920x1080x24"
#   INSIDE   what it tests that a shared library shows nobody, compiled into it there
#   SERIAL   runs it alone, for what it times
#   LOCALES  runs it again in two locales that write a comma in numbers; LOCALES_IN_CI does so where the configuration CI is
#            asked for (ctest -C CI). For what prints, parses or compares numbers, texts and dates, or starts programs that
#            do: not for pixels, the link's bytes, kills, paces, and what says the same again at length.
find_package(GTest REQUIRED)

# Compiling the tests is most of a build. What they test is optimised as users have it; they themselves need it less, and
# share the header that costs each of them most. A compiler cache does better without that.
add_library(quorin_test_options INTERFACE)
target_link_libraries(quorin_test_options INTERFACE quorin_options)
target_compile_options(quorin_test_options INTERFACE $<$<CONFIG:Release>:-Og>)
add_library(quorin_test_main STATIC ${PROJECT_SOURCE_DIR}/tests/support/test_main.cpp)
target_link_libraries(quorin_test_main PUBLIC GTest::gtest PRIVATE quorin_test_options)
if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
    target_precompile_headers(quorin_test_main PRIVATE <gtest/gtest.h>)
endif()

# For tests that start programs.
add_library(quorin_test_programs STATIC ${PROJECT_SOURCE_DIR}/tests/support/programs.cpp)
quorin_room(quorin_test_programs tests)
target_link_libraries(quorin_test_programs PUBLIC GTest::gtest PRIVATE quorin_options)
target_compile_definitions(quorin_test_programs PUBLIC
    QUORIN_PROGRAMS="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}" QUORIN_SOURCE="${PROJECT_SOURCE_DIR}")
add_dependencies(quorin_test_programs quorin zk4sim quorin-io quorin-lesson)

# For tests that look at the display, and use its mouse and keyboard.
find_library(QUORIN_XTST_LIBRARY Xtst REQUIRED)
add_library(quorin_test_screen STATIC ${PROJECT_SOURCE_DIR}/tests/support/screen.cpp)
quorin_room(quorin_test_screen tests)
target_link_libraries(quorin_test_screen PUBLIC quorin_test_programs ${QUORIN_XTST_LIBRARY} ${QUORIN_X11_LIBRARY}
                      PRIVATE quorin_options)

# For tests that answer the windows of their own program.
add_library(quorin_test_robot STATIC ${PROJECT_SOURCE_DIR}/tests/support/robot.cpp)
target_link_libraries(quorin_test_robot PUBLIC quorin_test_screen quorin::fltk PRIVATE quorin_options)

# The comma locales are made here rather than asked of the machine: a bare Debian has none.
set(QUORIN_COMMA_LOCALES fr_FR.UTF-8 de_DE.UTF-8)
set(QUORIN_LOCALE_DIR ${PROJECT_BINARY_DIR}/locales)
foreach(locale IN LISTS QUORIN_COMMA_LOCALES)
    if(NOT EXISTS ${QUORIN_LOCALE_DIR}/${locale})
        file(MAKE_DIRECTORY ${QUORIN_LOCALE_DIR})
        string(REGEX REPLACE "\\..*" "" language ${locale})
        execute_process(COMMAND localedef --no-archive -f UTF-8 -i ${language} ${QUORIN_LOCALE_DIR}/${locale}
                        COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()

# Seconds after which a test hangs, rather than being slow on a busy machine.
set(QUORIN_TEST_TIMEOUT 900)

# What the toolkit's own libraries keep until the end is no leak of ours.
set(QUORIN_TEST_ENVIRONMENT
    LOCPATH=${QUORIN_LOCALE_DIR}
    LSAN_OPTIONS=suppressions='${PROJECT_SOURCE_DIR}/tests/support/leaks.txt':print_suppressions=0
    UBSAN_OPTIONS=print_stacktrace=1)

function(quorin_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DISPLAY;SERIAL;LOCALES;LOCALES_IN_CI" "SCREEN"
                          "SOURCES;LINKS;ARGS;LABELS;INSIDE")
    set(program tests_${name})
    list(TRANSFORM arg_INSIDE PREPEND ${PROJECT_SOURCE_DIR}/)
    if(NOT BUILD_SHARED_LIBS)
        set(arg_INSIDE "")
    endif()
    add_executable(${program} ${arg_SOURCES} ${arg_INSIDE})
    quorin_room(${program} tests)
    target_link_libraries(${program} PRIVATE quorin_test_main quorin_test_options ${arg_LINKS})
    if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
        target_precompile_headers(${program} REUSE_FROM quorin_test_main)
    endif()
    set(command ${program} ${arg_ARGS})
    if(arg_DISPLAY)
        set(command ${PROJECT_SOURCE_DIR}/tools/with_display $<TARGET_FILE:${program}> ${arg_ARGS})
        list(APPEND arg_LABELS display)
    endif()
    set(environment ${QUORIN_TEST_ENVIRONMENT})
    if(arg_SCREEN)
        list(APPEND environment QUORIN_SCREEN=${arg_SCREEN})
    endif()
    add_test(NAME ${name} COMMAND ${command})
    set(tests ${name})
    set(configurations "")
    if(arg_LOCALES_IN_CI)
        set(configurations CONFIGURATIONS CI)
    endif()
    foreach(locale IN LISTS QUORIN_COMMA_LOCALES)
        if(arg_LOCALES OR arg_LOCALES_IN_CI)
            add_test(NAME ${name}.${locale} COMMAND ${command} ${configurations})
            list(APPEND tests ${name}.${locale})
        endif()
    endforeach()
    foreach(test IN LISTS tests)
        set(own_environment ${environment})
        set(labels ${arg_LABELS})
        if(test MATCHES "\\.(.*)$")
            list(APPEND own_environment LC_ALL=${CMAKE_MATCH_1})
            list(APPEND labels locale)
        endif()
        set_tests_properties(${test} PROPERTIES ENVIRONMENT "${own_environment}" LABELS "${labels}"
                             TIMEOUT ${QUORIN_TEST_TIMEOUT} RUN_SERIAL "${arg_SERIAL}")
    endforeach()
endfunction()
