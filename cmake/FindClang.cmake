# quillmender_find_clang(VARIABLE): the path of a clang++ that compiles standard coroutines with
# every libstdc++ that GCC 12 and later bring (19 does, 14 does not); empty when there is none.
function(quillmender_find_clang variable)
    set(oldest 19)
    set(names "")
    foreach(version RANGE ${oldest} 25)
        list(APPEND names clang++-${version})
    endforeach()
    find_program(QUILLMENDER_CLANG NAMES ${names} clang++ NAMES_PER_DIR
        VALIDATOR quillmender_is_new_clang DOC "clang++ of version ${oldest} or later")
    if(QUILLMENDER_CLANG)
        set(${variable} ${QUILLMENDER_CLANG} PARENT_SCOPE)
    else()
        set(${variable} "" PARENT_SCOPE)
    endif()
endfunction()

function(quillmender_is_new_clang result candidate)
    execute_process(COMMAND ${candidate} -dumpversion
        OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(NOT version VERSION_GREATER_EQUAL 19)
        set(${result} FALSE PARENT_SCOPE)
    endif()
endfunction()
