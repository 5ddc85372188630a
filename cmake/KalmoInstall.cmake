# `cmake --install build`: the programs and what belongs beside them, where a Unix system looks for it.
include(GNUInstallDirs)

# The programs share one folder with their plug-ins and templates, because they look for these beside themselves. The
# search path gets links to them.
set(KALMO_PROGRAM_DIR "lib/kalmo")
set(programs kalmoctl kalmo-handset)
if(KALMO_GUI)
    list(APPEND programs kalmo)
endif()
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/links")
foreach(program IN LISTS programs)
    install(TARGETS ${program} RUNTIME DESTINATION "${KALMO_PROGRAM_DIR}")
    file(CREATE_LINK "../${KALMO_PROGRAM_DIR}/${program}" "${CMAKE_BINARY_DIR}/links/${program}" SYMBOLIC)
    install(FILES "${CMAKE_BINARY_DIR}/links/${program}" DESTINATION "${CMAKE_INSTALL_BINDIR}")
endforeach()
install(TARGETS m9b g722demo RUNTIME DESTINATION "${KALMO_PROGRAM_DIR}/Plugins")
install(DIRECTORY "${CMAKE_SOURCE_DIR}/src/transfer/export/ExportVorlagen" DESTINATION "${KALMO_PROGRAM_DIR}")

foreach(program IN LISTS programs ITEMS m9b g722demo)
    install(FILES "packaging/${program}.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES "packaging/de/${program}.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/de/man1")
endforeach()
install(FILES packaging/kalmoctl.bash DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME kalmoctl)
# The udev of a system reads its own folder only; another prefix is for looking at it.
set(KALMO_UDEV_DIR "lib/udev/rules.d" CACHE STRING "Folder of the udev rule, below the prefix unless absolute")
install(FILES packaging/60-kalmo.rules DESTINATION "${KALMO_UDEV_DIR}")

if(KALMO_GUI)
    install(FILES packaging/kalmo.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES packaging/works.merrow.Kalmo.metainfo.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
    install(FILES packaging/kalmo-types.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages" RENAME kalmo.xml)
    set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
    install(FILES packaging/kalmo.svg DESTINATION "${icons}/scalable/apps")
    # Desktops that draw no SVG files take the nearest of these sizes, in pixels.
    find_program(RSVG_CONVERT rsvg-convert)
    if(RSVG_CONVERT)
        foreach(size 16 22 24 32 48 64 128 256 512)
            set(picture "${CMAKE_BINARY_DIR}/icons/${size}.png")
            add_custom_command(OUTPUT "${picture}"
                COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_BINARY_DIR}/icons"
                COMMAND "${RSVG_CONVERT}" -w ${size} -h ${size} -o "${picture}" "${CMAKE_SOURCE_DIR}/packaging/kalmo.svg"
                DEPENDS packaging/kalmo.svg VERBATIM)
            list(APPEND pictures "${picture}")
            install(FILES "${picture}" DESTINATION "${icons}/${size}x${size}/apps" RENAME kalmo.png)
        endforeach()
        add_custom_target(kalmo_icons ALL DEPENDS ${pictures})
    endif()
endif()
