# What `cmake --install` puts under the prefix: the programs, the help pages and the
# examples the program reads from <prefix>/share/ampora, and the files through which a Linux
# desktop shows the program in its menu and opens .amq files with it.
# The program finds its files at <its folder>/../share/ampora (src/ui/install_paths.cpp).
if(NOT CMAKE_INSTALL_BINDIR STREQUAL "bin" OR NOT CMAKE_INSTALL_DATADIR STREQUAL "share")
    message(WARNING "DC Ampora looks for its help and examples in ../share/ampora beside its "
                    "binary; a bindir other than bin or a datadir other than share breaks that.")
endif()

set(AMPORA_DATA_DESTINATION ${CMAKE_INSTALL_DATADIR}/ampora)

install(TARGETS ampora-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/
        DESTINATION ${AMPORA_DATA_DESTINATION}/examples
        FILES_MATCHING PATTERN "*.amq")

if(AMPORA_BUILD_UI)
    install(TARGETS ampora RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    # What `ampora-cli report` runs to draw the report (src/cli/report_helper.h).
    install(TARGETS ampora-cli-report RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/ampora)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/help/ DESTINATION ${AMPORA_DATA_DESTINATION}/help)

    install(FILES ${PROJECT_SOURCE_DIR}/packaging/ampora.desktop
            DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/ampora-mime.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME ampora.xml)

    # Each icon as drawn (scalable) and as PNGs in the sizes desktops ask for, rendered from
    # the drawing so the two never disagree.
    find_program(AMPORA_RSVG_CONVERT rsvg-convert)
    if(NOT AMPORA_RSVG_CONVERT)
        message(FATAL_ERROR "rsvg-convert (Debian package librsvg2-bin) renders the icons; "
                            "tools/setup.sh installs it.")
    endif()
    set(AMPORA_ICON_SIZES 16 22 24 32 48 64 128 256)
    set(AMPORA_ICON_PNGS)
    foreach(icon ampora:apps application-x-ampora-circuit:mimetypes)
        string(REPLACE ":" ";" parts ${icon})
        list(GET parts 0 name)
        list(GET parts 1 context)
        set(svg ${PROJECT_SOURCE_DIR}/packaging/icons/${name}.svg)
        install(FILES ${svg} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/${context})
        foreach(size ${AMPORA_ICON_SIZES})
            set(png ${PROJECT_BINARY_DIR}/icons/${size}x${size}/${name}.png)
            add_custom_command(OUTPUT ${png}
                COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/icons/${size}x${size}
                COMMAND ${AMPORA_RSVG_CONVERT} -w ${size} -h ${size} -o ${png} ${svg}
                DEPENDS ${svg}
                COMMENT "Rendering the ${size}x${size} ${name} icon")
            list(APPEND AMPORA_ICON_PNGS ${png})
            install(FILES ${png}
                    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/${context})
        endforeach()
    endforeach()
    add_custom_target(ampora_icons ALL DEPENDS ${AMPORA_ICON_PNGS})
endif()
