# The program is there all day and mostly waits: what its code weighs in memory counts for more than
# what the optimiser would gain, and a coroutine inlined everywhere weighs twice as much.
include(CheckLinkerFlag)

option(QUILLMENDER_SMALL "Compile the program for size" ON)
set(QUILLMENDER_PROGRAM_OPTIONS "")
set(QUILLMENDER_PROGRAM_LINK_OPTIONS "")
if(QUILLMENDER_SMALL AND CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang|AppleClang)$")
    set(QUILLMENDER_PROGRAM_OPTIONS $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-Os>)
endif()
if(UNIX AND NOT APPLE)
    # Addresses to be filled in at the start take a hundredth of the room.
    check_linker_flag(CXX "-Wl,--fatal-warnings,-z,pack-relative-relocs"
                      QUILLMENDER_HAS_PACKED_RELOCATIONS)
    if(QUILLMENDER_HAS_PACKED_RELOCATIONS)
        set(QUILLMENDER_PROGRAM_LINK_OPTIONS -Wl,-z,pack-relative-relocs)
    endif()
endif()
