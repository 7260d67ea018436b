// What recordings cost: a session that is recorded beside one that is not, an hour's file, and how
// soon an hour is run again. Ratios of what was measured in the same run.
//
//     build/bench/bin/bench_recording
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "bench/good_bases.h"
#include "bench/recording_live.h"
#include "bench/whole_program.h"
#include "recording/replay.h"
#include "tests/recording/recorded_session.h"

namespace {

using steady = std::chrono::steady_clock;

constexpr int hour_steps = 360'000, rounds = 5;

/// Keeps what it reads in one of the forms, as text.
struct form_keeper : event_reader {
    explicit form_keeper(recording_kind kind) : form(new_recording(kind)) {}
    void read(std::span<const station_event> events) override { text += form->text_of(events); }
    std::unique_ptr<recording_form> form;
    std::string text;
};

/// An hour of good bases; the seconds that it took.
double run_an_hour(const std::vector<event_reader*>& readers) {
    workcell_model model(29);
    station_run run(model);
    for (event_reader* const each : readers) run.add_reader(*each);
    run.begin("");
    good_bases hands;
    const auto start = steady::now();
    for (int i = 0; i < hour_steps; ++i) {
        hands.look([&](station_input input) { return model.sensor(place_of(input)); });
        run.step([&](int output) { return hands.command(output); });
    }
    run.finish("fin demandée");
    return seconds_since(start);
}

void measure_hours() {
    std::vector<double> bare, recorded, replayed_s;
    std::string csv, vcd;
    for (int i = 0; i < rounds; ++i) {
        form_keeper as_csv(recording_kind::csv), as_vcd(recording_kind::vcd);
        bare.push_back(run_an_hour({}));
        recorded.push_back(run_an_hour({&as_csv, &as_vcd}));
        csv = as_csv.text;
        vcd = as_vcd.text;
        const auto start = steady::now();
        const replayed result = replay_of(csv);
        replayed_s.push_back(seconds_since(start));
        if (result.out != csv) std::printf("the replay differs: %s\n", result.complaint.c_str());
    }
    std::printf("an hour of good bases: %ld rows, csv %zu KiB, vcd %zu KiB\n",
                std::ranges::count(csv, '\n'), csv.size() / 1024, vcd.size() / 1024);
    std::printf("the hour, stepped alone            %6.3f s, %6.0f simulated seconds a second\n",
                median(bare), 3600 / median(bare));
    std::printf("the hour, recorded in both forms   %6.3f s, %4.2f of that alone\n",
                median(recorded), median(recorded) / median(bare));
    std::printf("the hour, run again and compared   %6.3f s, %4.2f of that alone, %6.0f a second\n",
                median(replayed_s), median(replayed_s) / median(bare), 3600 / median(replayed_s));
}

}  // namespace

int main() {
    measure_hours();
    measure_live_sessions();
}
