# Manual page and changelog, which Debian wants compressed without a time in them.
find_program(GZIP gzip REQUIRED)
set(compressed)
function(install_compressed file folder)
    configure_file(${file}.in ${file} @ONLY)
    set(result ${CMAKE_CURRENT_BINARY_DIR}/${file}.gz)
    add_custom_command(
        OUTPUT ${result}
        COMMAND sh -c "\"$1\" -9n <\"$2\" >\"$3\"" compress
                ${GZIP} ${CMAKE_CURRENT_BINARY_DIR}/${file} ${result}
        DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${file}
        VERBATIM)
    install(FILES ${result} DESTINATION ${folder})
    set(compressed ${compressed} ${result} PARENT_SCOPE)
endfunction()
install_compressed(quillmender.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_compressed(changelog ${CMAKE_INSTALL_DATADIR}/doc/quillmender)
add_custom_target(quillmender-documents ALL DEPENDS ${compressed})
