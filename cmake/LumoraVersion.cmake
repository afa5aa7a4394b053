# LUMORA_VERSION_TEXT: the version, and in a clone the commit that it was built from.
set(LUMORA_VERSION_TEXT ${PROJECT_VERSION})
find_package(Git QUIET)
if(GIT_FOUND AND EXISTS ${PROJECT_SOURCE_DIR}/.git)
    execute_process(COMMAND ${GIT_EXECUTABLE} -C ${PROJECT_SOURCE_DIR} rev-parse --short HEAD
        OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    execute_process(COMMAND ${GIT_EXECUTABLE} -C ${PROJECT_SOURCE_DIR}
            rev-parse --path-format=absolute --git-path logs/HEAD
        OUTPUT_VARIABLE log OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(commit)
        string(APPEND LUMORA_VERSION_TEXT " (${commit})")
    endif()
    if(EXISTS "${log}")
        # Grows with each commit, and has this found out again.
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${log})
    endif()
endif()
