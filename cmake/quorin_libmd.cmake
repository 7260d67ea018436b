# libmd, which computes SHA-256, as the target quorin::libmd; where it is not found there is none, and quorin_libmd_missing
# says so. Also installed: the package config includes it for the components that are linked with it.
set(quorin_libmd_missing "libmd was not found: apt-get install libmd-dev")
if(NOT TARGET quorin::libmd)
    find_path(QUORIN_LIBMD_INCLUDE_DIR sha2.h)
    find_library(QUORIN_LIBMD_LIBRARY md)
    mark_as_advanced(QUORIN_LIBMD_INCLUDE_DIR QUORIN_LIBMD_LIBRARY)
    if(QUORIN_LIBMD_INCLUDE_DIR AND QUORIN_LIBMD_LIBRARY)
        add_library(quorin::libmd INTERFACE IMPORTED GLOBAL)
        set_target_properties(quorin::libmd PROPERTIES
            INTERFACE_INCLUDE_DIRECTORIES "${QUORIN_LIBMD_INCLUDE_DIR}"
            INTERFACE_LINK_LIBRARIES "${QUORIN_LIBMD_LIBRARY}")
    endif()
endif()
