# How every target of the project is compiled, and the two kinds there are: layers and tests.

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
# What people run holds a token and reads what strangers write: what would overrun a buffer or an
# array ends the program instead. script/hardening looks whether the program was made so.
# The code for -pie comes from the toolkit's own -fPIC. Never -fPIE in its place: it copies the
# toolkit's variables into the program, and the toolkit crashes over the difference.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection LUMORA_HAS_CF_PROTECTION) # on some processors only
target_compile_options(lumora_compile_options INTERFACE
    "$<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3;-D_GLIBCXX_ASSERTIONS>"
    "$<$<CONFIG:Release>:-fstack-protector-strong;-fstack-clash-protection>"
    "$<$<AND:$<CONFIG:Release>,$<BOOL:${LUMORA_HAS_CF_PROTECTION}>>:-fcf-protection>")
target_link_options(lumora_compile_options INTERFACE
    "$<$<CONFIG:Release>:-pie;-Wl,-z,relro,-z,now,-z,noexecstack>")
if(LUMORA_SANITIZE)
    target_compile_options(lumora_compile_options INTERFACE
        -fsanitize=${LUMORA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(lumora_compile_options INTERFACE -fsanitize=${LUMORA_SANITIZE})
endif()

# The target of a layer's folder: lumora_ui_panel for ui/panel.
function(lumora_layer_target folder result)
    string(REPLACE "/" "_" name ${folder})
    set(${result} lumora_${name} PARENT_SCOPE)
endfunction()

# The rows of src/layers.txt, bottom to top, as "folder:folder folder".
function(lumora_read_layers result)
    set_property(DIRECTORY ${PROJECT_SOURCE_DIR}
        APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/layers.txt)
    file(STRINGS ${PROJECT_SOURCE_DIR}/src/layers.txt rows REGEX "^[^#]")
    set(${result} ${rows} PARENT_SCOPE)
endfunction()

# The layer of this folder: a static library of all its sources that links the layers which
# src/layers.txt lets it see.
#   lumora_layer([USES <library of others>...])
function(lumora_layer)
    cmake_parse_arguments(LAYER "" "" "USES" ${ARGN})
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
    lumora_layer_target(${folder} name)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    lumora_read_layers(rows)
    list(FILTER rows INCLUDE REGEX "^${folder}:")
    string(REGEX REPLACE "^[^:]*: *" "" seen "${rows}")
    separate_arguments(seen)
    foreach(below IN LISTS seen)
        lumora_layer_target(${below} below_name)
        target_link_libraries(${name} PUBLIC ${below_name})
    endforeach()
    target_link_libraries(${name} PUBLIC ${LAYER_USES} PRIVATE lumora_compile_options)
endfunction()

# One test program of all sources in this folder, with the layer of the same folder below src/, if
# there is one. Every case in it is a test of its own in ctest, in a process of its own; AT_ONCE:
# the program as a whole is one, where no case can leave anything behind for the next.
#   lumora_tests([AT_ONCE] [USES <library>...])
function(lumora_tests)
    cmake_parse_arguments(TEST "AT_ONCE" "" "USES" ${ARGN})
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
    lumora_layer_target(${folder} layer)
    set(name ${layer}_tests)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    add_executable(${name} ${sources})
    if(TARGET ${layer})
        target_link_libraries(${name} PRIVATE ${layer})
    endif()
    target_link_libraries(${name} PRIVATE
        ${TEST_USES} lumora_test_support lumora_compile_options)
    # Fixtures stand in anonymous namespaces; in a unity build their file is no main file.
    target_compile_options(${name} PRIVATE -Wno-subobject-linkage)
    target_precompile_headers(${name} REUSE_FROM lumora_test_support)
    if(TEST_AT_ONCE)
        add_test(NAME ${folder} COMMAND ${name} --gtest_brief=1)
        set_tests_properties(${folder} PROPERTIES TIMEOUT 300)
    else()
        # Cases with a parameter go by its name or number: its value may be bytes, or a page of them.
        gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST TEST_PREFIX "${folder}: "
            NO_PRETTY_VALUES PROPERTIES TIMEOUT 300)
    endif()
endfunction()
