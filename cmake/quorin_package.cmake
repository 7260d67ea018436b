# find_package(quorin COMPONENTS ioshare strings ...) for other projects.
include(CMakePackageConfigHelpers)

# What each component needs, as lines for the package config: "set(quorin_needs_NAME ...)" and those that need the toolkit.
get_property(components GLOBAL PROPERTY QUORIN_COMPONENTS)
list(JOIN components " " component_words)
set(quorin_component_lists "set(quorin_all_components ${component_words})\n")
set(fltk_components "")
foreach(component IN LISTS components)
    get_property(links GLOBAL PROPERTY QUORIN_LINKS_${component})
    set(needs_${component} "")
    foreach(link IN LISTS links)
        string(REPLACE "quorin::" "" needed ${link})
        if(needed STREQUAL fltk OR needed IN_LIST fltk_components)
            list(APPEND fltk_components ${component})
        endif()
        if(needed IN_LIST components)
            list(APPEND needs_${component} ${needed} ${needs_${needed}})
        endif()
    endforeach()
    list(REMOVE_DUPLICATES needs_${component})
    list(JOIN needs_${component} " " needed_words)
    string(APPEND quorin_component_lists "set(quorin_needs_${component} ${needed_words})\n")
endforeach()
list(REMOVE_DUPLICATES fltk_components)
list(JOIN fltk_components " " fltk_words)
string(APPEND quorin_component_lists "set(quorin_fltk_components ${fltk_words})\n")

set(quorin_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/quorin)
configure_package_config_file(cmake/quorinConfig.cmake.in ${PROJECT_BINARY_DIR}/quorinConfig.cmake
                              INSTALL_DESTINATION ${quorin_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/quorinConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quorinConfig.cmake ${PROJECT_BINARY_DIR}/quorinConfigVersion.cmake
              cmake/quorin_fltk.cmake
        DESTINATION ${quorin_package_dir})
