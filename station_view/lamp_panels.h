// Any station's inputs and outputs as lamps: for one that has no drawing.
#pragma once
#include <vector>

#include "session/station_events.h"
#include "session/station_model.h"
#include "simulator/output_panel.h"
#include "lesson/bilingual.h"

/// Adds names to an output panel, each as it stands, and shows the first page.
void add_names(OFD_simulator_output& panel, name_span names);

/// Follows a session's events.
class lamp_panels : public event_reader {
public:
    /// Of both panels together, in pixels.
    static constexpr int width = 480;

    /// In the window being filled, at its left edge.
    lamp_panels(Fl_Window* window, int height, const station_model& model, language in);

    void read(std::span<const station_event> events) override;
    /// Shows the values as they are.
    void show();

private:
    struct lamps {
        OFD_simulator_output panel;
        std::vector<int> values, shown;
        void show();
    };
    lamps inputs_, outputs_;
};
