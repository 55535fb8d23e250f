# The pictures of every size are drawn from the one drawing.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(theme ${CMAKE_INSTALL_DATADIR}/icons/hicolor)

set(pictures)
foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/icons/${size}x${size})
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(
        OUTPUT ${folder}/${QUILLMENDER_ID}.png
        COMMAND ${RSVG_CONVERT} --width ${size} --height ${size}
                --output ${folder}/${QUILLMENDER_ID}.png
                ${CMAKE_CURRENT_SOURCE_DIR}/icons/application.svg
        DEPENDS icons/application.svg
        VERBATIM)
    list(APPEND pictures ${folder}/${QUILLMENDER_ID}.png)
    install(FILES ${folder}/${QUILLMENDER_ID}.png DESTINATION ${theme}/${size}x${size}/apps)
endforeach()
add_custom_target(quillmender-icons ALL DEPENDS ${pictures})
install(FILES icons/application.svg RENAME ${QUILLMENDER_ID}.svg
        DESTINATION ${theme}/scalable/apps)

# A desktop colours the symbolic drawing itself; the other two are for one that does not, and are
# named after the status area that they are for.
function(install_symbolic name folder color)
    set(SYMBOLIC_COLOR ${color})
    set(drawing ${CMAKE_CURRENT_BINARY_DIR}/icons/${name}.svg)
    configure_file(icons/symbolic.svg.in ${drawing} @ONLY)
    install(FILES ${drawing} DESTINATION ${theme}/${folder})
endfunction()
install_symbolic(${QUILLMENDER_ID}-symbolic symbolic/apps "#2e3436")
install_symbolic(${QUILLMENDER_ID}-status-light scalable/status "#2e3436")
install_symbolic(${QUILLMENDER_ID}-status-dark scalable/status "#f6f5f4")
