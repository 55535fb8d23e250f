# A part of the program: a static library whose headers are included from src/.
function(quillmender_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../src)
    target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES})
endfunction()

# What test programs are compiled with besides; the checks of buffers want the optimiser.
set(QUILLMENDER_TEST_OPTIONS -O0 -U_FORTIFY_SOURCE)

# One GoogleTest program with all its cases under CTest. The environment has no display unless the
# test starts one itself.
function(quillmender_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 60)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../tests)
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS "${ARG_LABELS}")
endfunction()

# Stands in for tests that this machine lacks something for: it is skipped, and says what is missing.
function(quillmender_skipped_test name label what missing)
    list(JOIN missing ", " missing)
    set(reason "not tested: ${what} (missing: ${missing})")
    message(WARNING "${reason}; scripts/install-dependencies macos")
    add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -E echo "${reason}")
    set_tests_properties(${name} PROPERTIES
        SKIP_REGULAR_EXPRESSION "^not tested" LABELS ${label})
endfunction()
