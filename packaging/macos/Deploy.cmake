# An installed bundle has everything in it that is not part of macOS, and is signed. What was fetched
# has install rules of its own, so ours are a component.
install(TARGETS quillmender BUNDLE DESTINATION . COMPONENT Quillmender)

find_program(MACDEPLOYQT macdeployqt
    HINTS ${Qt6_DIR}/../../../bin ${QT6_INSTALL_PREFIX}/bin REQUIRED)
# A signature for one machine alone cannot have what notarising wants.
if(QUILLMENDER_SIGNING_IDENTITY STREQUAL "-")
    set(signing -codesign=-)
else()
    set(signing "-sign-for-notarization=${QUILLMENDER_SIGNING_IDENTITY}")
endif()
install(CODE "
    execute_process(
        COMMAND \"${MACDEPLOYQT}\"
                \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Quillmender.app\"
                -always-overwrite \"${signing}\"
        COMMAND_ERROR_IS_FATAL ANY)"
    COMPONENT Quillmender)

add_custom_target(bundle
    COMMAND ${CMAKE_COMMAND} --install ${PROJECT_BINARY_DIR} --component Quillmender
            --prefix ${PROJECT_BINARY_DIR}/bundle
    DEPENDS quillmender quillmender_macos_contract
    VERBATIM)
