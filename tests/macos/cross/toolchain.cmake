# Compiles and links for a Mac on a system without its SDK. The architecture is
# QUILLMENDER_MACOS_ARCH; the libraries are the stubs that MakeSdk.cmake has put into
# QUILLMENDER_MACOS_SDK; the tools are those of QUILLMENDER_LLVM, an installation of LLVM.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES
    QUILLMENDER_MACOS_ARCH QUILLMENDER_MACOS_SDK QUILLMENDER_LLVM)

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${QUILLMENDER_MACOS_ARCH})
set(CMAKE_OSX_SYSROOT ${QUILLMENDER_MACOS_SDK})
set(CMAKE_CXX_COMPILER ${QUILLMENDER_LLVM}/bin/clang++)
set(CMAKE_CXX_COMPILER_TARGET ${QUILLMENDER_MACOS_ARCH}-apple-macos13)
set(CMAKE_AR ${QUILLMENDER_LLVM}/bin/llvm-ar CACHE STRING "")
set(CMAKE_RANLIB ${QUILLMENDER_LLVM}/bin/llvm-ranlib CACHE STRING "")
set(CMAKE_INSTALL_NAME_TOOL ${QUILLMENDER_LLVM}/bin/llvm-install-name-tool CACHE STRING "")

execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-resource-dir
    OUTPUT_VARIABLE resources OUTPUT_STRIP_TRAILING_WHITESPACE)

# The order matters: what stands in for the SDK's headers comes before the C library that fills in
# for the rest of it.
set(headers
    ${CMAKE_CURRENT_LIST_DIR}/include
    ${QUILLMENDER_LLVM}/include/c++/v1
    ${resources}/include
    ${CMAKE_CURRENT_LIST_DIR}/../doubles/include
    /usr/aarch64-linux-gnu/include)
list(TRANSFORM headers PREPEND "-isystem ")
list(JOIN headers " " headers)
set(CMAKE_CXX_FLAGS_INIT
    "-nostdinc++ -nostdlibinc -U__nonnull -D_GNU_SOURCE -D__NO_CTYPE ${headers}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld")
