# Writes what a program for the Mac is linked against into the folder SDK: stubs of the frameworks
# and system libraries with the symbols of libraries/*.txt, and stubs of the libraries SHARED (a list
# of "name=path,path" of what is the same library on this system) with the symbols that those export
# and those of their list.
# Usage: cmake -DSDK=<folder> -DSHARED=<list> -P MakeSdk.cmake

# The one library of headers that has no folder of its own here.
file(MAKE_DIRECTORY ${SDK}/include)
file(CREATE_LINK /usr/include/nlohmann ${SDK}/include/nlohmann SYMBOLIC)

# Uses the lists `symbols`, `classes` and `reexports` of its caller.
function(write_stub file installName)
    list(TRANSFORM symbols PREPEND "_")
    foreach(list IN ITEMS symbols classes reexports)
        list(TRANSFORM ${list} PREPEND "'")
        list(TRANSFORM ${list} APPEND "'")
        list(JOIN ${list} ", " ${list})
    endforeach()
    set(targets "arm64-macos, x86_64-macos")
    set(text "--- !tapi-tbd\ntbd-version: 4\ntargets: [ ${targets} ]\ninstall-name: '${installName}'\n")
    if(reexports)
        string(APPEND text "reexported-libraries:\n  - targets: [ ${targets} ]\n")
        string(APPEND text "    libraries: [ ${reexports} ]\n")
    endif()
    string(APPEND text "exports:\n  - targets: [ ${targets} ]\n    symbols: [ ${symbols} ]\n")
    if(classes)
        string(APPEND text "    objc-classes: [ ${classes} ]\n")
    endif()
    file(WRITE ${file} "${text}...\n")
endfunction()

# Lists have a name per line: "class" before an Objective-C class, "reexports" before another stub.
function(read_list file)
    set(symbols)
    if(EXISTS ${file})
        file(STRINGS ${file} symbols REGEX "^[^#]")
    endif()
    foreach(word IN ITEMS class reexports)
        set(${word} ${symbols})
        list(FILTER ${word} INCLUDE REGEX "^${word} ")
        list(TRANSFORM ${word} REPLACE "^${word} " "")
    endforeach()
    list(FILTER symbols EXCLUDE REGEX " ")
    set(symbols ${symbols} PARENT_SCOPE)
    set(classes ${class} PARENT_SCOPE)
    set(reexports ${reexports} PARENT_SCOPE)
endfunction()

set(lists ${CMAKE_CURRENT_LIST_DIR}/libraries)
foreach(name IN ITEMS AppKit ApplicationServices Carbon CoreFoundation Foundation Security
                      ServiceManagement)
    set(folder /System/Library/Frameworks/${name}.framework)
    read_list(${lists}/${name}.txt)
    write_stub(${SDK}${folder}/${name}.tbd ${folder}/Versions/A/${name})
endforeach()
foreach(name IN ITEMS libSystem libobjc)
    read_list(${lists}/${name}.txt)
    write_stub(${SDK}/usr/lib/${name}.tbd /usr/lib/${name}.dylib)
endforeach()

foreach(entry IN LISTS SHARED)
    string(REGEX MATCH "^([^=]+)=(.+)$" entry "${entry}")
    set(name ${CMAKE_MATCH_1})
    string(REPLACE "," ";" paths ${CMAKE_MATCH_2})
    read_list(${lists}/${name}.txt)
    foreach(path IN LISTS paths)
        execute_process(
            COMMAND /usr/lib/llvm-19/bin/llvm-nm --dynamic --defined-only --format=just-symbols ${path}
            OUTPUT_VARIABLE exported COMMAND_ERROR_IS_FATAL ANY)
        string(STRIP "${exported}" exported)
        string(REPLACE "\n" ";" exported "${exported}")
        list(APPEND symbols ${exported})
    endforeach()
    # Versions of symbols are this system's own.
    list(TRANSFORM symbols REPLACE "@.*" "")
    list(REMOVE_DUPLICATES symbols)
    write_stub(${SDK}/usr/lib/${name}.tbd /usr/lib/${name}.dylib)
endforeach()
