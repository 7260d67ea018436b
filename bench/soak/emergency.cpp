// Emergency stops at any moment, by the window's button, its key and by quorin-io's request: each
// is told with the end of the step that takes it, and the station stands still from then on until
// it is released, as its recording shows. How soon that is in real time is a figure; a second is
// too late on any machine.
//
//     QUORIN_SCREEN=1920x1080x24 tools/with_display build/release/bin/soak_emergency 1000
#include <algorithm>
#include <sstream>

#include "bench/soak/attack.h"
#include "station_view/window_layout.h"
#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/screen.h"
#include "workcell/station_names.h"

namespace {

constexpr double too_late_s = 1;
constexpr int step_ms = 10;
constexpr const char* ways[] = {"request", "button", "key"};

class stopped_station {
public:
    explicit stopped_station(attack& run) : run_(run), segment_(live_.ident) {
        window_ = display_.wait_for_window("Station ZK4");
        if (!segment_ || window_ == 0)
            run.find("the station does not start: " + live_.process->err());
        display_.give_focus(window_);
    }

    void round() {
        for (int i = 0; i < segment_->nb_outputs; ++i)
            segment_->output_values[i] = static_cast<int>(run_.below(2));
        usleep(static_cast<useconds_t>(run_.below(200'000)));
        const auto from = std::chrono::steady_clock::now();
        const std::size_t way = run_.below(3);
        stop(way);
        if (!becomes(1)) return run_.find("a stop was not taken: " + std::string(ways[way]));
        const double taken_s = seconds_since(from);
        taken_ms_.push_back(taken_s * 1000);
        if (run_.judges_figures() && taken_s > too_late_s)
            run_.find("a stop took " + std::to_string(taken_s) + " s");
        usleep(static_cast<useconds_t>(run_.below(100'000)));
        if (live_.ask("desk atu=0") != "0\n" || !becomes(0)) run_.find("a stop was not released");
        ++run_.done;
    }
    std::string figures() {
        std::ranges::sort(taken_ms_);
        if (taken_ms_.empty()) return "none";
        std::ostringstream all;
        all << "told within " << taken_ms_[taken_ms_.size() / 2] << " ms (half of them), "
            << taken_ms_[taken_ms_.size() * 99 / 100] << " ms (99 %), " << taken_ms_.back()
            << " ms (all)";
        return all.str();
    }

    /// What the recording says: nothing moves from the step of a stop to the one of its release.
    void judge_recording() {
        if (live_.end() != 0) run_.find("the station ended otherwise: " + live_.process->err());
        std::istringstream rows(bytes_of(file_));
        bool stopped = false;
        long stops = 0, at_ms = 0;
        for (std::string row; std::getline(rows, row);) {
            const long ms = std::atol(row.c_str());
            const std::string what = row.substr(row.find(',') + 1);
            if (what == "pupitre,atu,1") stopped = true, at_ms = ms, ++stops;
            if (what == "pupitre,atu,0") stopped = false;
            if (what == "entree,atu,1" && ms != at_ms + step_ms) run_.find("told late: " + row);
            if (stopped && what.starts_with("entree,") && !what.starts_with("entree,atu,") &&
                !what.starts_with("entree,init,"))
                run_.find("moved under a stop: " + row);
        }
        if (stops != run_.done) run_.find(std::to_string(stops) + " stops are recorded");
    }

private:
    void stop(std::size_t way) {
        const window_layout::area at = window_layout::emergency;
        if (way == 0 && live_.ask("desk atu=1") != "0\n") run_.find("a request was refused");
        if (way == 1) display_.click(window_, at.x + at.w / 2, at.y + at.h / 2);
        if (way == 2) display_.key(XK_Escape);
    }
    bool becomes(int value) {
        return wait_until(
            [&] { return segment_->input_values[place_of(station_input::atu)] == value; },
            seconds(5));
    }

    attack& run_;
    const runtime_folder runtime_;
    const temporary_folder folder_{"quorin_soak_"};
    const std::string file_ = folder_ / "a.csv";
    screen display_;
    controlled_station live_{std::make_unique<program>(
        std::vector<std::string>{built("zk4sim"), "--no-panel", "--csv", file_})};
    attached_segment segment_;
    x_window window_ = 0;
    std::vector<double> taken_ms_;
};

}  // namespace

int main(int argc, char** argv) {
    attack run("emergency", argc, argv, 1000);
    stopped_station station(run);
    while (run.goes_on()) station.round();
    station.judge_recording();
    return run.finish("emergency stops", station.figures());
}
