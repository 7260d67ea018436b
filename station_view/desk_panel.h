// The operator's desk: start and stop while they are held, the emergency stop, and the button that
// lets it up again.
#pragma once
#include <array>
#include <cstdint>
#include <functional>

#include "session/station_run.h"
#include "station_view/window_actions.h"

class Fl_Button;
class held_button;
class mushroom_button;

class desk_panel {
public:
    /// Makes its widgets in the group being filled. `run` must live as long; `changed` is called
    /// after each change of its desk.
    desk_panel(station_run& run, language in, std::function<void()> changed);

    /// From now on it shows the desk, and nobody works it here.
    void only_show();

    /// Start or stop, pushed or let go. However short a push is, one step takes it.
    void hold(bool station_desk::*button, bool held);
    /// Everything that is held here is let go.
    void let_go();
    /// The emergency stop, pushed and latched, or let up again; from the next step on.
    void set_emergency(bool down);

    /// After the session was served: lets go what a step has taken.
    void served();
    /// Shows the desk as it is.
    void show();

private:
    /// A button that can be held here: since when it is, or was until a moment ago.
    struct push {
        bool station_desk::*button;
        std::int64_t ms = 0;
        bool held = false, waits_for_step = false;
    };

    void set(bool station_desk::*button, bool pushed);

    station_run& run_;
    bool only_shows_ = false;
    std::function<void()> changed_;
    std::array<push, 2> pushes_;
    held_button *start_, *stop_;
    mushroom_button* emergency_;
    Fl_Button* unlock_;
};
