// Ending a form of the toolkit's forms layer with its widgets where they were put.
#pragma once
#include <FL/forms.H>

/// Ends the form being built. The forms layer mirrors every y at the end of a form in programs that
/// never called fl_initialize; its switch for that is left as it was found.
inline void end_form_unmirrored() {
    const char mirrored = fl_flip;
    fl_flip = 0;
    fl_end_form();
    fl_flip = mirrored;
}
