# What a desktop and a shell know the programs by: menu entries, their icon, completion. The programs alone bring it.
if(QUORIN_COMPONENTS)
    return()
endif()
install(FILES desktop/zk4sim.desktop desktop/zk4sim-english.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT programs)
install(FILES desktop/quorin.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT programs)
foreach(size IN ITEMS 48 128)
    install(FILES desktop/quorin-${size}.png RENAME quorin.png COMPONENT programs
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()

# One file completes all programs; the shell looks for it by the name of each.
set(completions ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES desktop/completion.bash DESTINATION ${completions} RENAME quorin COMPONENT programs)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/completions)
foreach(program IN ITEMS zk4sim quorin-io quorin-lesson quorin-modbus)
    if(TARGET ${program})
        file(CREATE_LINK quorin ${PROJECT_BINARY_DIR}/completions/${program} SYMBOLIC)
        install(FILES ${PROJECT_BINARY_DIR}/completions/${program} DESTINATION ${completions} COMPONENT programs)
    endif()
endforeach()
