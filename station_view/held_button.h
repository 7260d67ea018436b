// A button that counts while it is held, by the mouse or by the space bar.
#pragma once
#include <FL/Fl_Button.H>

#include <functional>

class held_button : public Fl_Button {
public:
    held_button(int x, int y, int w, int h, std::function<void(bool held)> changed);
    int handle(int event) override;

private:
    void hold(bool held);

    std::function<void(bool held)> changed_;
    bool held_ = false;
};
