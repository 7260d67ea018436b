// The faults to tick while the session runs: a row for each sensor and actuator, a box for each
// kind that fits it.
#pragma once
#include <FL/Fl_Scroll.H>

#include <functional>
#include <vector>

#include "session/station_run.h"
#include "lesson/bilingual.h"
#include "station_view/window_layout.h"

class fault_box;

class fault_list : public Fl_Scroll {
public:
    /// In the group being filled. `run` must live as long; `changed` is called after each change
    /// of its faults.
    fault_list(const window_layout::area& at, station_run& run, language in,
               std::function<void()> changed);

    /// From now on it shows the faults, and nobody sets them here; it scrolls as before.
    void only_show();

    /// Shows the faults that are set, here or by others.
    void show_faults();
    /// Gives the keyboard to the first box, where there is one that can be ticked.
    void go_to();
    /// How many are set.
    std::size_t faults_set() const { return shown_.size(); }

    int handle(int event) override;

private:
    struct tick_box {
        station_fault fault;
        fault_box* button;
    };

    void add_section(fault_place place, name_span names, language in);
    void add_row(std::string_view name, std::span<const fault_kind> kinds, language in);
    void tick(const fault_box* button);
    void bring_into_view(const Fl_Widget& widget);

    station_run& run_;
    std::function<void()> changed_;
    std::vector<tick_box> boxes_;
    std::vector<station_fault> shown_;
    int next_y_;
};
