# GCC 12 destroys the value of `c ? a : co_await b` twice, and the sanitized
# build is clang's: no co_await stands where an expression may skip it.
file(GLOB_RECURSE sources ${SOURCES}/*.cpp ${SOURCES}/*.h ${SOURCES}/*.mm)
foreach(source IN LISTS sources)
    file(READ ${source} text)
    if(text MATCHES "[^\n]*[ \n](\\?|:|&&|\\|\\|)[ \n]+!?co_await[^\n]*")
        message(SEND_ERROR "${source}: ${CMAKE_MATCH_0}")
    endif()
endforeach()
