// The session's time: pause, single steps, speed; what it is doing, and since when.
#pragma once
#include <functional>
#include <vector>

#include "session/live_session.h"
#include "station_view/session_news.h"
#include "station_view/window_actions.h"

class Fl_Box;
class Fl_Button;
class Fl_Slider;
class Fl_Widget;

class time_panel {
public:
    /// Makes its widgets in the group being filled. `session` and `news` must live as long;
    /// `changed` is called after each change of the session's time.
    time_panel(live_session& session, session_news& news, language in,
               std::function<void()> changed);

    /// As the key P: the other of the two.
    void pause_or_resume();
    /// Pauses, and makes one step.
    void step();
    /// Pauses, and goes on to the next change.
    void run_to_next_change();
    /// To the next of the speeds 0.1, 0.2, 0.5, 1, 2, 5, ... 100 on that side.
    void change_speed(bool faster);

    /// Shows the time as it is.
    void show();
    /// From now on nobody works it here.
    void only_show();

private:
    void set_speed(double speed);
    void take_slider();
    void show_state();

    live_session& session_;
    session_news& news_;
    language language_;
    std::function<void()> changed_;
    Fl_Box *clock_, *state_, *speed_text_;
    Fl_Button* pause_;
    Fl_Slider* speed_;
    std::vector<Fl_Widget*> worked_;
};

/// The next of those speeds, or the last one.
[[nodiscard]] double next_speed(double speed, bool faster);
