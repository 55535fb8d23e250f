# What makes a fault in the program harder to use: checks of the stack and of buffers' sizes, a table
# of functions that cannot be written, addresses that cannot be guessed, and jumps that only lead to
# where a function begins.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckPIESupported)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
check_pie_supported(OUTPUT_VARIABLE noPie LANGUAGES CXX)
if(NOT CMAKE_CXX_LINK_PIE_SUPPORTED AND NOT APPLE)
    message(WARNING "The program cannot be position-independent: ${noPie}")
endif()

# Warnings are errors later, so that a flag which is only passed over does not count.
function(quillmender_harden flag)
    string(MAKE_C_IDENTIFIER "QUILLMENDER_HAS${flag}" known)
    set(CMAKE_REQUIRED_FLAGS -Werror)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
        add_compile_options(${flag})
    endif()
endfunction()

quillmender_harden(-fstack-protector-strong)
if(APPLE)
    # The system's linker and headers do the rest without being asked.
    return()
endif()

quillmender_harden(-fstack-clash-protection)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|amd64|AMD64|i[3-6]86)$")
    quillmender_harden(-fcf-protection=full)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
    quillmender_harden(-mbranch-protection=standard)
endif()
add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)

# It needs the optimiser, and the sanitizers have checks of their own in its place.
if(NOT QUILLMENDER_SANITIZE)
    set(level 3)
    set(CMAKE_REQUIRED_FLAGS "-Werror -O2 -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${level}")
    check_cxx_source_compiles("#include <cstring>\nint main() {}" QUILLMENDER_HAS_FORTIFY_${level})
    unset(CMAKE_REQUIRED_FLAGS)
    if(NOT QUILLMENDER_HAS_FORTIFY_${level})
        set(level 2)
    endif()
    set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
    add_compile_options("$<${optimised}:-U_FORTIFY_SOURCE>"
                        "$<${optimised}:-D_FORTIFY_SOURCE=${level}>")
endif()
