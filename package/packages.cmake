# Packages: for Debian one with the program and one for those who build with it; for Windows a zip and an installer.
set(CPACK_PACKAGE_NAME kzdraw)
set(CPACK_PACKAGE_VENDOR "the kzattribute authors")
set(CPACK_PACKAGE_CONTACT "the kzattribute authors <maintainers@kzattribute.invalid>")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
  set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Select the objects of drawings by what they are")
  set(CPACK_GENERATOR ZIP NSIS)
  set(CPACK_PACKAGE_FILE_NAME kzdraw-${PROJECT_VERSION}-windows-x86_64)
  set(CPACK_MONOLITHIC_INSTALL ON)
  set(CPACK_PACKAGE_INSTALL_DIRECTORY kzdraw)
  set(CPACK_NSIS_PACKAGE_NAME kzdraw)
  set(CPACK_NSIS_DISPLAY_NAME kzdraw)
  set(CPACK_NSIS_INSTALL_ROOT [[$PROGRAMFILES64]])
  set(CPACK_NSIS_ENABLE_UNINSTALL_BEFORE_INSTALL ON)
  # In the start menu, and among what a drawing can be opened with; the folder of the menu is the one that was chosen.
  set(CPACK_NSIS_CREATE_ICONS_EXTRA [[
  CreateShortCut '$SMPROGRAMS\$STARTMENU_FOLDER\kzdraw.lnk' '$INSTDIR\kzdraw.exe' 'window']])
  set(CPACK_NSIS_DELETE_ICONS_EXTRA [[  Delete '$SMPROGRAMS\$MUI_TEMP\kzdraw.lnk']])
  set(CPACK_NSIS_EXTRA_INSTALL_COMMANDS [[
  WriteRegStr SHCTX 'Software\Classes\Applications\kzdraw.exe\shell\open\command' '' '"$INSTDIR\kzdraw.exe" window "%1"'
  WriteRegStr SHCTX 'Software\Classes\Applications\kzdraw.exe\SupportedTypes' '.svg' ''
  WriteRegStr SHCTX 'Software\Classes\Applications\kzdraw.exe\SupportedTypes' '.svgz' '']])
  set(CPACK_NSIS_EXTRA_UNINSTALL_COMMANDS [[  DeleteRegKey SHCTX 'Software\Classes\Applications\kzdraw.exe']])
  set(CPACK_NSIS_DEFINES "  Target amd64-unicode") # the installer itself for 64 bits, as the program
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_COMPONENTS_ALL runtime development)
  set(CPACK_COMPONENTS_GROUPING IGNORE)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
  set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME kzdraw)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION graphics)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS xdg-utils) # opens the page
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${KZ_BIN_DIR})
  set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "Select the objects of drawings by what they are
kzdraw hosts a plug-in of nine tools that select the objects of SVG drawings by
type, dimension, fill, stroke, effect, layer and color, and that show or hide
one color at a time: on the command line, in scripts, and on a page in a
browser.")
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME kzdraw-dev)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "kzdraw (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), libpugixml-dev, zlib1g-dev")
  set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Build hosts of plug-ins, and plug-ins for kzdraw
Headers and libraries for programs that host the plug-in of kzdraw, or others
written for it, and for such plug-ins; with find_package(kzdraw) for CMake, and
two samples.")
endif()
include(CPack)
