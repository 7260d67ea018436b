// What the viewer of long messages shows.
#pragma once
#include <FL/Fl_Multi_Browser.H>
#include <FL/Fl_Window.H>

#include <string>
#include <vector>

#include "tests/support/robot.h"

inline Fl_Browser* lines_of(Fl_Window& window) {
    return static_cast<Fl_Browser*>(find_widget(
        window, [](Fl_Widget& each) { return dynamic_cast<Fl_Multi_Browser*>(&each) != nullptr; }));
}

inline std::vector<std::string> texts_of(Fl_Window& window) {
    std::vector<std::string> texts;
    const Fl_Browser* browser = lines_of(window);
    for (int i = 1; i <= browser->size(); ++i) texts.push_back(browser->text(i));
    return texts;
}
