// The simulator's two panels over a station without a model: one sets its inputs, the other shows
// its outputs.
#pragma once
#include <functional>
#include <vector>

#include "simulator/input_panel.h"
#include "simulator/output_panel.h"
#include "lesson/bilingual.h"
#include "station_view/manual_station.h"

class manual_panels {
public:
    /// In the window being filled, at its left edge, `height` high. `station` must live as long.
    /// `changed` is called after GO and INIT, `quit` after QUIT.
    manual_panels(Fl_Window* window, int height, manual_station& station, language in,
                  std::function<void()> changed, std::function<void()> quit);

    /// Shows the outputs as they are.
    void show();
    /// Looks whether the panel's buttons were used. Whenever the toolkit has worked.
    void look();

private:
    void use(Fl_Widget* used);

    manual_station& station_;
    std::function<void()> changed_, quit_;
    OFD_simulator_input inputs_;
    OFD_simulator_output outputs_;
    std::vector<int> shown_;
};
