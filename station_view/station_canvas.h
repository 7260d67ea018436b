// The drawing as a widget: holds the last picture, paints it, and tells what is pointed at.
#pragma once
#include <FL/Fl_Widget.H>

#include <string>

#include "station_view/station_picture.h"

/// Needs a display, and a double-buffered window around it, or it flickers. It has no clock:
/// whoever owns it calls `show` when something may have changed. The window takes care of its size;
/// each resize draws the scene anew for it. Tooltips, the program's other ones too, get about the
/// size of its names.
class station_canvas : public Fl_Widget {
public:
    /// Pixels of the window, as for any widget; empty until a scene is shown.
    station_canvas(int x, int y, int w, int h);
    ~station_canvas() override;

    /// Shows the scene. It is painted with the toolkit's next turn, and only when its picture is
    /// not the one that is shown already. Returns whether the scene is another one than before.
    bool show(const station_scene& scene);
    using Fl_Widget::show;

    /// What is shown.
    const station_picture& picture() const { return picture_; }
    /// The thing below the mouse; null when there is none. Valid until the next change.
    const picture_thing* pointed_at() const;
    /// What is told of it; empty: nothing.
    const std::string& told() const { return tip_; }
    /// How often it was painted.
    int paintings() const { return paintings_; }

    /// The toolkit's: draws the scene anew for the size.
    void resize(int x, int y, int w, int h) override;
    /// The toolkit's: follows the mouse for the tooltip, which is told anew, too, when what the
    /// mouse rests on changes.
    int handle(int event) override;

protected:
    /// The toolkit's: paints the picture.
    void draw() override;

private:
    bool is_below_pointer() const;
    void tell(const picture_thing* thing);

    station_scene scene_;
    station_picture picture_;
    // What the toolkit's tooltip shows: it keeps the pointer.
    std::string tip_;
    // Where the pointer was last, in the window.
    int pointer_x_ = 0, pointer_y_ = 0;
    int paintings_ = 0;
};
