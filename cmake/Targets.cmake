# A part of the program: a static library whose headers are included from src/.
function(quillmender_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../src)
    target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES})
endfunction()

# What test programs are compiled with besides; the checks of buffers want the optimiser, and who
# steps through a test has the debug preset.
set(QUILLMENDER_TEST_OPTIONS -O0 -U_FORTIFY_SOURCE $<$<CONFIG:RelWithDebInfo>:-g0>)
# Their hundred programs are linked in a quarter of the time.
find_program(QUILLMENDER_LLD ld.lld)
if(QUILLMENDER_LLD AND NOT APPLE)
    set(QUILLMENDER_TEST_LINK_OPTIONS -fuse-ld=lld)
endif()

# AUTOMOC adds a source of its own to each target, for most test programs an empty one.
function(quillmender_moc_where_wanted name)
    set(wanted OFF)
    foreach(source IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
        cmake_path(REPLACE_EXTENSION source LAST_ONLY h OUTPUT_VARIABLE header)
        foreach(file IN ITEMS ${source} ${header})
            if(EXISTS ${file})
                file(STRINGS ${file} found REGEX "Q_OBJECT|Q_GADGET|Q_NAMESPACE" LIMIT_COUNT 1)
                if(found)
                    set(wanted ON)
                endif()
            endif()
        endforeach()
    endforeach()
    set_target_properties(${name} PROPERTIES AUTOMOC ${wanted})
endfunction()

# One GoogleTest program with all its cases under CTest. The environment has no display unless the
# test starts one itself.
function(quillmender_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 60)
    endif()
    # What the sanitizers watch takes several times as long.
    if(QUILLMENDER_SANITIZE)
        math(EXPR ARG_TIMEOUT "${ARG_TIMEOUT} * 4")
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../tests)
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock)
    quillmender_moc_where_wanted(${name} ${ARG_SOURCES})
    if(QUILLMENDER_UNITY_TESTS)
        set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
        # The compiler takes what one source includes for a header and sees the names of its
        # neighbours. The other presets have these warnings.
        target_compile_options(${name} PRIVATE -Wno-shadow
            $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    endif()
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
