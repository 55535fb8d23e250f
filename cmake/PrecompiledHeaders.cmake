# What most sources include is parsed once and not hundreds of times, which halves the time of a build.
# The sanitized preset does without: it, and with it lint, sees every source's own includes.
if(NOT QUILLMENDER_PRECOMPILE OR APPLE OR NOT CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang)$")
    return()
endif()

set(precompiledSource ${PROJECT_BINARY_DIR}/precompiled.cpp)
if(NOT EXISTS ${precompiledSource})
    file(WRITE ${precompiledSource} "")
endif()
function(quillmender_precompiled name)
    cmake_parse_arguments(ARG "" "" "HEADERS;LIBRARIES" ${ARGN})
    add_library(${name} OBJECT ${precompiledSource})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES})
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

set(common <algorithm> <chrono> <functional> <memory> <optional> <utility>
    <QByteArray> <QCoroTask> <QHash> <QList> <QObject> <QString> <QStringList> <QTimer>)
quillmender_precompiled(quillmender_precompiled
    HEADERS ${common} LIBRARIES Qt6::Core QCoro6::Core)
target_compile_options(quillmender_precompiled PRIVATE ${QUILLMENDER_PROGRAM_OPTIONS})
if(QUILLMENDER_TESTS)
    find_package(GTest REQUIRED)
    quillmender_precompiled(quillmender_precompiled_test
        HEADERS ${common} <gmock/gmock.h> <gtest/gtest.h>
        LIBRARIES Qt6::Core QCoro6::Core GTest::gmock)
    if(NOT QUILLMENDER_SANITIZE)
        target_compile_options(quillmender_precompiled_test PRIVATE ${QUILLMENDER_TEST_OPTIONS})
    endif()
endif()

# All programs and libraries of a folder and of those below it.
function(quillmender_use_precompiled folder name)
    cmake_parse_arguments(ARG "" "" "DEFINITIONS" ${ARGN})
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(type MATCHES "^(STATIC_LIBRARY|MODULE_LIBRARY|EXECUTABLE)$")
            target_precompile_headers(${target} REUSE_FROM ${name})
            # The header is for a library's code, and for a program's only where that is made alike. Not
            # every Qt asks for it.
            target_compile_options(${target} PRIVATE -fPIC)
            target_compile_definitions(${target} PRIVATE ${ARG_DEFINITIONS})
        endif()
    endforeach()
    get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(below IN LISTS folders)
        quillmender_use_precompiled(${below} ${name} DEFINITIONS ${ARG_DEFINITIONS})
    endforeach()
endfunction()

quillmender_use_precompiled(${PROJECT_SOURCE_DIR}/src quillmender_precompiled)
if(QUILLMENDER_TESTS)
    # GoogleTest defines it for those that link it.
    quillmender_use_precompiled(${PROJECT_SOURCE_DIR}/tests quillmender_precompiled_test
        DEFINITIONS GTEST_HAS_PTHREAD=1)
endif()
if(QUILLMENDER_BENCH)
    quillmender_use_precompiled(${PROJECT_SOURCE_DIR}/bench quillmender_precompiled)
endif()
