# What the program loads while it runs lies in a folder of its own. Right below the libraries' folder,
# it would be taken for one of theirs.
include(GNUInstallDirs)
set(QUILLMENDER_MODULES ${CMAKE_INSTALL_LIBDIR}/quillmender/modules)
set(QUILLMENDER_MODULE_FOLDER ../${QUILLMENDER_MODULES}) # seen from the program's

# The Wayland backend for programs in that folder; nothing but its two functions is seen from
# outside. Further sources take the place of those that the backend has of the same names.
function(quillmender_wayland_module name programFolder)
    add_library(${name} MODULE
        ${PROJECT_SOURCE_DIR}/src/platform/linux/wayland/module/ModuleFunctions.cpp ${ARGN})
    target_link_libraries(${name} PRIVATE quillmender_platform_wayland)
    target_link_options(${name} PRIVATE -Wl,--exclude-libs,ALL)
    set_target_properties(${name} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        LIBRARY_OUTPUT_DIRECTORY ${programFolder}/${QUILLMENDER_MODULE_FOLDER}
        OUTPUT_NAME wayland
        PREFIX "")
endfunction()
