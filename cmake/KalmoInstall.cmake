# `cmake --install build`: the programs and what belongs beside them, where a Unix system looks for it.
include(GNUInstallDirs)

install(TARGETS kalmoctl RUNTIME)
install(FILES packaging/kalmoctl.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES packaging/kalmoctl.bash DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME kalmoctl)
# The udev of a system reads its own folder only; another prefix is for looking at it.
set(KALMO_UDEV_DIR "lib/udev/rules.d" CACHE STRING "Folder of the udev rule, below the prefix unless absolute")
install(FILES packaging/60-kalmo.rules DESTINATION "${KALMO_UDEV_DIR}")

if(KALMO_GUI)
    install(TARGETS kalmo RUNTIME)
    install(FILES packaging/kalmo.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES packaging/kalmo.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES packaging/kalmo.svg DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
endif()
