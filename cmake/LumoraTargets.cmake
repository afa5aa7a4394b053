# How every target of the project is compiled, and the two kinds there are: floors and tests.

add_library(lumora_compile_options INTERFACE)
target_compile_definitions(lumora_compile_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_KEYWORDS
    QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(lumora_compile_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${LUMORA_WERROR}>:-Werror>)
if(LUMORA_SANITIZE)
    target_compile_options(lumora_compile_options INTERFACE
        -fsanitize=${LUMORA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(lumora_compile_options INTERFACE -fsanitize=${LUMORA_SANITIZE})
endif()

# A floor of the house: a static library that links only the floors below it.
#   lumora_floor(<name> SOURCES <file>... USES <library>...)
function(lumora_floor name)
    cmake_parse_arguments(FLOOR "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} STATIC ${FLOOR_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${FLOOR_USES} PRIVATE lumora_compile_options)
endfunction()

# A test program, one per tested file or fixture; every case in it is a test of its own in ctest.
#   lumora_test(<name> SOURCES <file>... USES <library>...)
function(lumora_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${TEST_SOURCES})
    target_link_libraries(${name} PRIVATE ${TEST_USES} lumora_test_support lumora_compile_options)
    target_precompile_headers(${name} REUSE_FROM lumora_test_support)
    lumora_moc_if_needed(${name} ${TEST_SOURCES})
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST TEST_PREFIX "${name}: "
        PROPERTIES TIMEOUT 120)
endfunction()

# Most tests declare no meta-objects; looking for them all the same would double the build.
function(lumora_moc_if_needed name)
    set(needed OFF)
    foreach(source IN LISTS ARGN)
        string(REGEX REPLACE "\\.cpp$" ".h" header ${source})
        foreach(file IN ITEMS ${source} ${header})
            if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${file})
                file(STRINGS ${file} declarations REGEX "Q_OBJECT")
                if(declarations)
                    set(needed ON)
                endif()
            endif()
        endforeach()
    endforeach()
    set_target_properties(${name} PROPERTIES AUTOMOC ${needed})
endfunction()
