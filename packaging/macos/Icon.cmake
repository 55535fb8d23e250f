# The icon of all sizes is drawn from the one drawing that the other systems use.
if(CMAKE_CROSSCOMPILING)
    set(QUILLMENDER_ICON_SET "" CACHE FILEPATH "The tool icon-set, built for this system")
else()
    set(QUILLMENDER_ICON_SET icon-set)
endif()
set(drawing ${PROJECT_SOURCE_DIR}/packaging/linux/icons/application.svg)
set(icon ${CMAKE_CURRENT_BINARY_DIR}/Quillmender.icns)
add_custom_command(
    OUTPUT ${icon}
    COMMAND ${QUILLMENDER_ICON_SET} ${drawing} ${icon}
    DEPENDS ${drawing} ${QUILLMENDER_ICON_SET}
    VERBATIM)
add_custom_target(quillmender-icon DEPENDS ${icon})
add_dependencies(quillmender quillmender-icon)
target_sources(quillmender PRIVATE ${icon})
set_source_files_properties(${icon} TARGET_DIRECTORY quillmender PROPERTIES
    GENERATED ON
    MACOSX_PACKAGE_LOCATION Resources)
