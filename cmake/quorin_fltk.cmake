# FLTK 1.3 and its forms layer, as the target quorin::fltk; where they are not found there is none, and
# quorin_fltk_missing says so. Also installed: the package config includes it for the components that need the toolkit.
set(quorin_fltk_missing "FLTK 1.3 with its forms layer was not found: apt-get install libfltk1.3-dev")
if(NOT TARGET quorin::fltk)
    find_path(QUORIN_FLTK_INCLUDE_DIR FL/forms.H)
    find_library(QUORIN_FLTK_LIBRARY fltk)
    find_library(QUORIN_FLTK_FORMS_LIBRARY fltk_forms)
    find_library(QUORIN_X11_LIBRARY X11)
    mark_as_advanced(QUORIN_FLTK_INCLUDE_DIR QUORIN_FLTK_LIBRARY QUORIN_FLTK_FORMS_LIBRARY QUORIN_X11_LIBRARY)
    if(QUORIN_FLTK_INCLUDE_DIR AND QUORIN_FLTK_LIBRARY AND QUORIN_FLTK_FORMS_LIBRARY AND QUORIN_X11_LIBRARY)
        # Seen by every folder, whichever came first, and by whoever adds this tree to another.
        add_library(quorin::fltk INTERFACE IMPORTED GLOBAL)
        set_target_properties(quorin::fltk PROPERTIES
            INTERFACE_INCLUDE_DIRECTORIES "${QUORIN_FLTK_INCLUDE_DIR}"
            INTERFACE_LINK_LIBRARIES "${QUORIN_FLTK_FORMS_LIBRARY};${QUORIN_FLTK_LIBRARY};${QUORIN_X11_LIBRARY}")
    endif()
endif()
