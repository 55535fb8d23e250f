# QCoro 0.8 resumes a coroutine again, or one that has gone, when a signal comes twice in a turn of
# the event loop or together with its limit: signals are awaited by SignalWait alone.
foreach(folder IN LISTS FOLDERS)
    file(GLOB_RECURSE sources ${folder}/*.cpp ${folder}/*.h ${folder}/*.mm)
    foreach(source IN LISTS sources)
        file(READ ${source} text)
        if(text MATCHES "qCoro(SignalListener)?\\([^;]*&[A-Za-z0-9_:<> ]+::[^;]*|[^\n]*QCoroSignal[^\n]*")
            message(SEND_ERROR "${source}: ${CMAKE_MATCH_0}")
        endif()
    endforeach()
endforeach()
