# The Debian package of whatever build this is: cpack -G DEB.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillmender)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION}${QUILLMENDER_PACKAGE_SUFFIX})
set(CPACK_PACKAGE_VENDOR Orvelline)
set(CPACK_PACKAGE_CONTACT "Orvelline <packages@quillmender.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://quillmender.example/)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "rewrite selected text in any application")
set(CPACK_PACKAGE_DESCRIPTION
"Select text in any application, press Control + Alt + Space and pick what
should happen to it: more formal, simpler, translated, corrected, or your own
instruction. The answer takes the place of the text, and the clipboard stays
what it was.
.
A language model that you choose does the work, over the network or on your
own machine: any endpoint that speaks the interface of OpenAI Responses,
Anthropic Messages or Gemini generateContent.")

# Files are installed for /usr, whatever prefix this build was configured with.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# In no list of libraries, since it is talked to: the accessibility bus and a session bus; or since it
# is loaded when it is first wanted: with the first key, and where the session is a Wayland one.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libsecret-1-0, qt6-wayland, at-spi2-core, default-dbus-session-bus | dbus-session-bus, hicolor-icon-theme")
# A secret service for the keys, the authorities that https endpoints are checked against, and
# the tool that menus call for the actions of the entry.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "ca-certificates, gnome-keyring | libkf5wallet-bin | keepassxc, libglib2.0-bin")
include(CPack)
