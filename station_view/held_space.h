// Tells the space bar's strokes from its repeats while it is held: the toolkit works a button with
// each of them, and gives them to whichever widget has the keyboard by then.
#pragma once
#include <FL/Fl.H>

#include <utility>

class held_space {
public:
    /// To be told each event of its widget first. Whether it is the space bar that was down before.
    bool repeats(int event) {
        if (event == FL_FOCUS) held_ = Fl::event_key(' ') != 0;
        if (Fl::event_key() != ' ') return false;
        if (event == FL_KEYUP) held_ = false;
        return event == FL_KEYBOARD && std::exchange(held_, true);
    }

private:
    bool held_ = false;
};
