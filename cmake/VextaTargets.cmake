# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
#
# One INTERFACE target carries every flag, and one function declares a room of the house:
# a static library that can include and link only the rooms named with it.

add_library(vexta_flags INTERFACE)
target_compile_options(vexta_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor
    -Woverloaded-virtual $<$<CXX_COMPILER_ID:GNU>:-Wunused-const-variable=1>
    $<$<BOOL:${VEXTA_WARNINGS_AS_ERRORS}>:-Werror>)
# In optimised code g++ 12 sees overlapping and endless copies in std::string (its bug 105651) and members of
# std::optional and std::variant that are not initialised, where there are none. The sanitizers look for
# the real ones.
target_compile_options(vexta_flags INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-stringop-overflow -Wno-maybe-uninitialized>)
# Calls are reproducible to the bit: no contraction of multiply and add, whatever the target.
target_compile_options(vexta_flags INTERFACE -ffp-contract=off)
if(VEXTA_SANITIZE)
    # Instrumented code raises many more alarms of that kind: the build that ships looks for warnings.
    target_compile_options(vexta_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-w>)
    target_compile_options(vexta_flags INTERFACE
        -fsanitize=${VEXTA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(vexta_flags INTERFACE -fsanitize=${VEXTA_SANITIZE})
endif()

# What most sources include anyway, compiled once for all rooms (not in the preset dev, where every file does
# without): standard headers are most of what a compiler reads.
file(CONFIGURE OUTPUT precompiled_standard.cpp CONTENT "")
add_library(precompiled_standard OBJECT ${CMAKE_CURRENT_BINARY_DIR}/precompiled_standard.cpp)
target_precompile_headers(precompiled_standard PRIVATE
    <algorithm> <array> <filesystem> <functional> <map> <memory> <optional> <sstream> <string> <string_view>
    <variant> <vector>)
target_link_libraries(precompiled_standard PRIVATE vexta_flags)

# vexta_room(<room> SOURCES <file>... [ROOMS <room>...] [PRIVATE_LIBRARIES <library>...]
#            [PUBLIC_LIBRARIES <library>...] [OWN_PRECOMPILED_HEADERS])
# `ROOMS` repeats the table in docs/architecture.md; the structure test reads the include lines against it.
function(vexta_room room)
    cmake_parse_arguments(ARG "OWN_PRECOMPILED_HEADERS" ""
        "SOURCES;ROOMS;PRIVATE_LIBRARIES;PUBLIC_LIBRARIES" ${ARGN})
    add_library(vexta_${room} STATIC ${ARG_SOURCES})
    if(NOT ARG_OWN_PRECOMPILED_HEADERS)
        target_precompile_headers(vexta_${room} REUSE_FROM precompiled_standard)
    endif()
    target_include_directories(vexta_${room} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    list(TRANSFORM ARG_ROOMS PREPEND vexta_)
    target_link_libraries(vexta_${room}
        PUBLIC ${ARG_ROOMS} ${ARG_PUBLIC_LIBRARIES}
        PRIVATE vexta_flags ${ARG_PRIVATE_LIBRARIES})
endfunction()

# What every test is compiled with. The rooms are tested as they ship, or as the sanitizers want them;
# optimising the tests themselves would only cost time.
add_library(vexta_test_flags INTERFACE)
target_link_libraries(vexta_test_flags INTERFACE vexta_flags)
target_compile_options(vexta_test_flags INTERFACE $<$<NOT:$<CONFIG:Debug>>:-O0>)
target_include_directories(vexta_test_flags INTERFACE ${PROJECT_SOURCE_DIR}/tests)
target_compile_definitions(vexta_test_flags INTERFACE
    VEXTA_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data"
    VEXTA_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

# vexta_test(<name> SOURCES <file>... ROOMS <room>... [LIBRARIES <library>...] [CONCURRENT])
# A GoogleTest program whose cases ctest runs one by one. CONCURRENT marks those that run several
# threads, which are tested under ThreadSanitizer as well.
add_custom_target(concurrent_tests COMMENT "Tests that run several threads")

function(vexta_test name)
    cmake_parse_arguments(ARG "CONCURRENT" "" "SOURCES;ROOMS;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    set(labels "engine")
    if(ARG_CONCURRENT)
        set(labels "concurrent")
        add_dependencies(concurrent_tests ${name})
    endif()
    list(TRANSFORM ARG_ROOMS PREPEND vexta_)
    target_precompile_headers(${name} REUSE_FROM precompiled_googletest)
    target_link_libraries(${name} PRIVATE
        vexta_test_flags ${ARG_ROOMS} ${ARG_LIBRARIES} GTest::gmock GTest::gtest GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 LABELS ${labels})
endfunction()

# vexta_window_test(<source>)
# A test class of the program window_tests: one test for ctest, named like the source, with a home and settings of
# its own.
function(vexta_window_test source)
    target_sources(window_tests PRIVATE ${source})
    cmake_path(GET source STEM name)
    set(home ${CMAKE_CURRENT_BINARY_DIR}/${name}-home)
    file(MAKE_DIRECTORY ${home})
    add_test(NAME ${name} COMMAND window_tests ${name})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 300
        LABELS window
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;HOME=${home};XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache")
endfunction()
