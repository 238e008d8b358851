# What `cmake --install` puts where on a Unix system; the Debian package is made of it. The Windows
# programs are gathered by the installer of packaging/windows.
if(UNIX AND NOT CMAKE_CROSSCOMPILING)
  include(GNUInstallDirs)
  set(debian_files ${CMAKE_CURRENT_LIST_DIR}/debian)
  set(data_folder ${CMAKE_INSTALL_DATADIR}/korvanti)
  set(completions ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

  install(TARGETS korvanti RUNTIME)
  install(FILES ${debian_files}/korvanti.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${debian_files}/korvanti.bash DESTINATION ${completions} RENAME korvanti)
  install(DIRECTORY examples/install examples/drawings DESTINATION ${data_folder}/examples)
  install(FILES examples/README.md DESTINATION ${data_folder}/examples)
  # The guides; what is for people at the source stays there.
  install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/korvanti
          FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg"
          PATTERN "architecture.md" EXCLUDE PATTERN "performance.md" EXCLUDE)

  if(KORVANTI_WINDOW)
    install(TARGETS KV90WIN RUNTIME)
    install(FILES ${debian_files}/KV90WIN.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${debian_files}/korvanti.bash DESTINATION ${completions} RENAME KV90WIN)
    install(FILES ${debian_files}/korvanti.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/icon/korvanti.svg
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  endif()
endif()
