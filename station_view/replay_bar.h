// The moments of a replay: where it stands, and a slider that takes it anywhere.
#pragma once
#include <functional>

#include "session/live_session.h"
#include "lesson/bilingual.h"

class Fl_Slider;

class replay_bar {
public:
    /// Makes its widget in the group being filled, for a replay whose length is known. `session`
    /// must live as long; `changed` is called after each change of the moment.
    replay_bar(live_session& session, language in, std::function<void()> changed);

    /// Shows the moment as it is, unless it is being chosen.
    void show();

private:
    void take_moment();

    live_session& session_;
    std::function<void()> changed_;
    Fl_Slider* moment_;
};
