# An installed bundle has everything in it that is not part of macOS, and is signed. What was fetched
# has install rules of its own, so ours are a component.
install(TARGETS quillmender BUNDLE DESTINATION . COMPONENT Quillmender)

find_program(MACDEPLOYQT macdeployqt
    HINTS ${Qt6_DIR}/../../../bin ${QT6_INSTALL_PREFIX}/bin REQUIRED)
install(CODE "
    execute_process(
        COMMAND \"${CMAKE_CURRENT_SOURCE_DIR}/deploy-bundle\" \"${MACDEPLOYQT}\"
                \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Quillmender.app\"
                \"${QUILLMENDER_SIGNING_IDENTITY}\"
        COMMAND_ERROR_IS_FATAL ANY)"
    COMPONENT Quillmender)

add_custom_target(bundle
    COMMAND ${CMAKE_COMMAND} --install ${PROJECT_BINARY_DIR} --component Quillmender
            --prefix ${PROJECT_BINARY_DIR}/bundle
    DEPENDS quillmender quillmender_macos_contract
    VERBATIM)
