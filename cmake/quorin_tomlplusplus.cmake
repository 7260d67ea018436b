# toml++, which reads TOML, as the target quorin_tomlplusplus; one line where it is missing. Its headers alone are used.
if(NOT TARGET quorin_tomlplusplus)
    find_path(QUORIN_TOMLPLUSPLUS_INCLUDE_DIR toml++/toml.h)
    mark_as_advanced(QUORIN_TOMLPLUSPLUS_INCLUDE_DIR)
    if(NOT QUORIN_TOMLPLUSPLUS_INCLUDE_DIR)
        message(FATAL_ERROR "toml++ was not found: apt-get install libtomlplusplus-dev")
    endif()
    add_library(quorin_tomlplusplus INTERFACE IMPORTED GLOBAL)
    set_target_properties(quorin_tomlplusplus PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES "${QUORIN_TOMLPLUSPLUS_INCLUDE_DIR}")
endif()
