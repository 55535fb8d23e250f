# For CMAKE_PROJECT_TOP_LEVEL_INCLUDES: packages are those of this system, their libraries the stubs
# of QUILLMENDER_MACOS_SDK.

function(use_stub target library)
    if(NOT TARGET ${target})
        return()
    endif()
    set(stub ${QUILLMENDER_MACOS_SDK}/usr/lib/${library}.tbd)
    set_target_properties(${target} PROPERTIES IMPORTED_LOCATION ${stub})
    get_target_property(configurations ${target} IMPORTED_CONFIGURATIONS)
    foreach(configuration IN LISTS configurations)
        set_target_properties(${target} PROPERTIES IMPORTED_LOCATION_${configuration} ${stub})
    endforeach()
endfunction()

macro(quillmender_find_package method)
    find_package(${ARGN} BYPASS_PROVIDER)
    foreach(module IN ITEMS Core Gui Widgets Network)
        use_stub(Qt6::${module} libQt6${module})
    endforeach()
    use_stub(QCoro6::Core libQCoro6Core)
    # Packages name the folder of all headers of this system, its C library among them. It is left
    # out, but for the one library that has no folder of its own.
    list(APPEND CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES /usr/include)
    if(TARGET nlohmann_json::nlohmann_json)
        set_target_properties(nlohmann_json::nlohmann_json PROPERTIES
            INTERFACE_INCLUDE_DIRECTORIES ${QUILLMENDER_MACOS_SDK}/include)
    endif()
endmacro()
cmake_language(SET_DEPENDENCY_PROVIDER quillmender_find_package
    SUPPORTED_METHODS FIND_PACKAGE)
