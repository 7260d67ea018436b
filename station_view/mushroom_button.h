// The emergency stop: a red mushroom on a yellow plate, which stays down.
#pragma once
#include <FL/Fl_Button.H>

/// Its `value` tells whether it is down. A press calls the callback; what lets it up is another
/// button's business.
class mushroom_button : public Fl_Button {
public:
    mushroom_button(int x, int y, int w, int h) : Fl_Button(x, y, w, h) {}
    int handle(int event) override;

protected:
    void draw() override;
};
