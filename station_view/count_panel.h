// The counter of bases that left, good and bad, and of incidents.
#pragma once
#include "session/station_run.h"
#include "lesson/bilingual.h"

class Fl_Box;

class count_panel {
public:
    /// Makes its widgets in the group being filled. `run` must live as long.
    count_panel(const station_run& run, language in);
    void show();

private:
    const station_run& run_;
    Fl_Box *good_, *bad_, *incidents_;
};
