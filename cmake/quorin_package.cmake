# find_package(quorin COMPONENTS ioshare strings ...) for other projects.
include(CMakePackageConfigHelpers)

# What each component needs, as lines for the package config: "set(quorin_needs_NAME ...)", and "set(quorin_outside_NAME
# ...)" for the machine's libraries.
get_property(components GLOBAL PROPERTY QUORIN_COMPONENTS)
list(JOIN components " " component_words)
set(quorin_component_lists "set(quorin_all_components ${component_words})\n")
foreach(component IN LISTS components)
    get_property(links GLOBAL PROPERTY QUORIN_LINKS_${component})
    get_property(outside_${component} GLOBAL PROPERTY QUORIN_OUTSIDE_${component})
    set(needs_${component} "")
    foreach(link IN LISTS links)
        string(REPLACE "quorin::" "" needed ${link})
        if(needed IN_LIST components)
            list(APPEND needs_${component} ${needed} ${needs_${needed}})
            list(APPEND outside_${component} ${outside_${needed}})
        endif()
    endforeach()
    foreach(kind IN ITEMS needs outside)
        list(REMOVE_DUPLICATES ${kind}_${component})
        list(JOIN ${kind}_${component} " " words)
        string(APPEND quorin_component_lists "set(quorin_${kind}_${component} ${words})\n")
    endforeach()
endforeach()

set(quorin_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/quorin)
configure_package_config_file(cmake/quorinConfig.cmake.in ${PROJECT_BINARY_DIR}/quorinConfig.cmake
                              INSTALL_DESTINATION ${quorin_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/quorinConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quorinConfig.cmake ${PROJECT_BINARY_DIR}/quorinConfigVersion.cmake
              cmake/quorin_fltk.cmake cmake/quorin_libmd.cmake
        DESTINATION ${quorin_package_dir})
