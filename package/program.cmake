# What surrounds the program on a desktop: the link, the manual page, completion, the menu's entry, the samples.
file(RELATIVE_PATH program /${CMAKE_INSTALL_BINDIR} /${home}/kzdraw)
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/link)
file(CREATE_LINK ${program} ${CMAKE_CURRENT_BINARY_DIR}/link/kzdraw SYMBOLIC)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/link/kzdraw DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/kzdraw.1)
execute_process(COMMAND gzip -9nc ${CMAKE_CURRENT_SOURCE_DIR}/kzdraw.1
  OUTPUT_FILE ${CMAKE_CURRENT_BINARY_DIR}/kzdraw.1.gz COMMAND_ERROR_IS_FATAL ANY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/kzdraw.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT runtime)
install(FILES kzdraw.bash RENAME kzdraw
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT runtime)
install(FILES kzdraw.zsh RENAME _kzdraw
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT runtime)
install(FILES kzdraw.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT runtime)
install(FILES kzdraw.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT runtime)

install(FILES ${CMAKE_CURRENT_BINARY_DIR}/texts/copyright ${CMAKE_CURRENT_BINARY_DIR}/texts/changelog.Debian.gz
  DESTINATION ${documents} COMPONENT runtime)
install(FILES ${CMAKE_SOURCE_DIR}/samples/harbour.svg ${CMAKE_SOURCE_DIR}/samples/plan.svg
  DESTINATION ${documents}/examples COMPONENT runtime)
