# The macOS code on doubles of the system's frameworks, wherever clang and GCC's Objective-C runtime
# are: a build of its own (tests/macos) with that compiler and the sanitizers, which links this
# build's libraries of shared code. Its tests are among this build's tests.
include(ExternalProject)

include(${CMAKE_CURRENT_LIST_DIR}/FindClang.cmake)
quillmender_find_clang(compiler)
set(missing "")
if(NOT compiler)
    set(missing "clang++ 19")
else()
    foreach(piece include/objc/objc.h libobjc.so lib/linux/libclang_rt.asan-${CMAKE_SYSTEM_PROCESSOR}.a)
        execute_process(
            COMMAND ${compiler} -print-file-name=${piece}
            OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT EXISTS "${found}")
            list(APPEND missing ${piece})
        endif()
    endforeach()
endif()
if(missing)
    quillmender_skipped_test(macos_doubles macos "the macOS code on doubles of its frameworks" "${missing}")
    return()
endif()

set(sharedLibraries
    quillmender_model quillmender_platform quillmender_platform_none quillmender_providers
    quillmender_selection quillmender_settings quillmender_ui quillmender_app
    quillmender_test_support)
set(binaryDir ${PROJECT_BINARY_DIR}/macos)
export(TARGETS ${sharedLibraries} FILE ${binaryDir}-imports/SharedLibraries.cmake)

ExternalProject_Add(macos_doubles
    SOURCE_DIR ${PROJECT_SOURCE_DIR}/tests/macos
    BINARY_DIR ${binaryDir}
    PREFIX ${binaryDir}-imports
    CMAKE_ARGS
        -DCMAKE_BUILD_TYPE=Debug
        -DCMAKE_CXX_COMPILER=${compiler}
        -DCMAKE_OBJCXX_COMPILER=${compiler}
        -DCMAKE_COMPILE_WARNING_AS_ERROR=${CMAKE_COMPILE_WARNING_AS_ERROR}
        -DQUILLMENDER_SHARED_LIBRARIES=${binaryDir}-imports/SharedLibraries.cmake
    DEPENDS ${sharedLibraries}
    BUILD_ALWAYS ON
    INSTALL_COMMAND ""
    USES_TERMINAL_BUILD ON)

# CTest reads the other build's tests when it runs; without them there is one that fails.
set(tests ${PROJECT_BINARY_DIR}/MacosTests.cmake)
file(CONFIGURE OUTPUT ${tests} CONTENT [[
if(EXISTS "@binaryDir@/CTestTestfile.cmake")
    subdirs("@binaryDir@")
else()
    add_test(macos_doubles_NOT_BUILT macos_doubles_NOT_BUILT)
endif()
]] @ONLY)
set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${tests})
