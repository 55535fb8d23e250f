# For the presets that want clang: whichever version of it is there and new enough.
include(${CMAKE_CURRENT_LIST_DIR}/FindClang.cmake)
quillmender_find_clang(compiler)
if(NOT compiler)
    message(FATAL_ERROR "No clang++ of version 19 or later was found; "
                        "scripts/install-dependencies lint installs one")
endif()
set(CMAKE_CXX_COMPILER ${compiler})
