// The window's contents where the station is drawn: picture, incidents, desk's column and faults or
// exercise, arranged anew with each size; or the drawing alone. In a small window the desk's column
// and the faults have one place.
#pragma once
#include <FL/Fl_Group.H>

#include <optional>

#include "station_view/window_layout.h"

class window_body : public Fl_Group {
public:
    /// In the group being filled. Its children will be the four parts, in the order of
    /// `window_layout::arrangement`, and last the button that brings the rest back when the drawing
    /// is alone. The one that makes it so is the last in the desk's column.
    explicit window_body(window_layout::side_part side)
        : Fl_Group(0, 0, window_layout::width, window_layout::height), side_(side) {}
    /// The buttons of the one place: in the desk's column beside the journal's, and with the
    /// faults.
    struct column_buttons {
        Fl_Widget *journal, *to_faults, *to_desk;
    };
    /// They are its children's own; seen where they are of use. Before it is resized.
    void take_buttons(const column_buttons& buttons);

    /// The toolkit's: Tab goes on from the last widget to the first.
    int handle(int event) override;
    void resize(int x, int y, int w, int h) override;
    /// The drawing takes all of it, or gives the others their places again.
    void change_drawing_alone();

    /// Whether the faults are in the desk's place now.
    [[nodiscard]] bool faults_for_desk() const {
        return one_column_ && shows_faults_ && !drawing_alone_;
    }
    /// Makes the faults seen, wherever their place is; the keyboard goes with them where that hides
    /// what had it.
    void show_faults();
    /// The desk has its place again, and the keyboard.
    void show_desk();

private:
    void arrange();
    void show_parts();
    void show_buttons();
    void give_keyboard();

    const window_layout::side_part side_;
    std::optional<column_buttons> buttons_;
    bool drawing_alone_ = false, one_column_ = false, shows_faults_ = false;
};
