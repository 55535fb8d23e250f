# Each fuzz target for half a minute and a soak of the program, wherever clang and libFuzzer are: a
# build of its own of the same sources, with that compiler, the sanitizers and the fuzzer's
# instrumentation.
include(ExternalProject)

set(targets accessible_answers answers action_documents release_manifest templates text_ranges selection_protocol)
include(${CMAKE_CURRENT_LIST_DIR}/FindClang.cmake)
quillmender_find_clang(compiler)
set(missing "")
if(NOT compiler)
    set(missing "clang++ 19")
else()
    set(piece lib/linux/libclang_rt.fuzzer-${CMAKE_SYSTEM_PROCESSOR}.a)
    execute_process(
        COMMAND ${compiler} -print-file-name=${piece}
        OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT EXISTS "${found}")
        set(missing ${piece})
    endif()
endif()
if(missing)
    quillmender_skipped_test(fuzz_targets fuzz "the fuzz targets" "${missing}")
    return()
endif()

set(fuzzBuild ${PROJECT_BINARY_DIR}/fuzz)
ExternalProject_Add(fuzz_build
    SOURCE_DIR ${PROJECT_SOURCE_DIR}
    BINARY_DIR ${fuzzBuild}
    PREFIX ${fuzzBuild}-imports
    CMAKE_ARGS
        -DCMAKE_BUILD_TYPE=RelWithDebInfo
        -DCMAKE_CXX_COMPILER=${compiler}
        -DCMAKE_COMPILE_WARNING_AS_ERROR=${CMAKE_COMPILE_WARNING_AS_ERROR}
        -DQUILLMENDER_FUZZ=ON -DQUILLMENDER_SANITIZE=ON
        -DQUILLMENDER_TESTS=OFF -DQUILLMENDER_BENCH=OFF
    BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target fuzz_targets quillmender
    BUILD_ALWAYS ON
    INSTALL_COMMAND ""
    USES_TERMINAL_BUILD ON)

foreach(target ${targets})
    # What is found beyond the corpus of the sources goes to the first folder.
    set(found ${fuzzBuild}/found/${target})
    file(MAKE_DIRECTORY ${found})
    add_test(NAME fuzz_${target}
        COMMAND ${fuzzBuild}/bin/fuzz_${target} -max_total_time=30 -timeout=25 -rss_limit_mb=4096
            -artifact_prefix=${fuzzBuild}/${target}- -verbosity=0 -print_final_stats=1
            ${found} ${PROJECT_SOURCE_DIR}/tests/fuzz/corpus/${target})
    set_tests_properties(fuzz_${target} PROPERTIES TIMEOUT 180 LABELS fuzz)
endforeach()

# The program of the same build, session after session: it must end without a word of a sanitizer,
# the one for leaks among them.
add_test(NAME soak_sanitized COMMAND soak_test)
set_tests_properties(soak_sanitized PROPERTIES
    TIMEOUT 900 LABELS "desktop;soak"
    ENVIRONMENT "QUILLMENDER_PROGRAM=${fuzzBuild}/bin/quillmender;QUILLMENDER_SOAK_LEAK_KIB=65536;ASAN_OPTIONS=quarantine_size_mb=1")
