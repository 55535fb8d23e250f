# The disk image, with the bundle beside a link to the Applications folder: cpack -G DragNDrop.
set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_NAME Quillmender)
set(CPACK_PACKAGE_VENDOR Orvelline)
set(CPACK_PACKAGE_FILE_NAME Quillmender-${PROJECT_VERSION})
set(CPACK_DMG_VOLUME_NAME Quillmender)
# Only our component: what was fetched would install itself too.
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};quillmender;Quillmender;/")
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
