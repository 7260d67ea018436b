// What it takes to mark a class: a thousand recordings of two minutes, run again and judged, beside
// the same minutes of the model alone.
#include <cstdio>
#include <ctime>
#include <functional>

#include "bench/good_bases.h"
#include "programs/quorin_lesson/marking.h"
#include "tests/recording/recorded_session.h"
#include "tests/support/files.h"

namespace {

constexpr int steps = 12'000, recordings = 1000;

/// Of this process: whoever else is at work does not count.
double processor_s() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

exercise task_of(std::uint32_t seed) {
    using in = station_input;
    using out = station_output;
    const auto input = [](in what, std::int32_t value) {
        return exercise_condition{condition_place::input, "", value, place_of(what)};
    };
    const auto output = [](out what, std::int32_t value) {
        return exercise_condition{condition_place::output, "", value, place_of(what)};
    };
    exercise task;
    task.station.seed = seed;
    for (int i = 0; i < 4; ++i) {
        task.goals.push_back({{}, {input(in::p1ok, 1), input(in::b1s, 1)}, 0, {}, 1});
        task.goals.push_back({{}, {input(in::p3ok, 1)}, 500, 60'000, 1});
        task.bans.push_back({{}, {output(out::DESP, 1), input(in::p3ok, 0)}, 1});
        task.hints.push_back({{}, {output(out::MTA, 1), input(in::p1ok, 1)}, 2000});
    }
    task.balances.push_back({{}, session_count::good, 3, {}, 1});
    return task;
}

/// Two minutes of good bases, or of hands that are never at rest.
struct two_minutes {
    const char* name;
    std::function<void(std::uint32_t seed, event_reader* reader)> run;
};

void run_good_bases(std::uint32_t seed, event_reader* reader) {
    workcell_model model(seed);
    station_run run(model);
    if (reader) run.add_reader(*reader);
    run.begin("");
    good_bases hands;
    for (int i = 0; i < steps; ++i) {
        hands.look([&](station_input input) { return model.sensor(place_of(input)); });
        run.step([&](int output) { return hands.command(output); });
    }
    run.finish("fin demandée");
}

void run_busy_hands(std::uint32_t seed, event_reader* reader) {
    workcell_model model(seed);
    station_run run(model);
    if (reader) run.add_reader(*reader);
    run.begin("");
    std::mt19937 random(seed);
    std::array<std::int32_t, static_cast<std::size_t>(station_output::count)> given = {};
    for (int i = 0; i < steps; ++i) {
        if (i % 5 == 0) given[random() % given.size()] = static_cast<std::int32_t>(random() % 2);
        run.step([&](int output) { return given[static_cast<std::size_t>(output)]; });
    }
    run.finish("fin demandée");
}

void measure(const two_minutes& what) {
    const temporary_folder files;
    constexpr std::uint32_t seeds = 20;
    for (std::uint32_t seed = 0; seed < seeds; ++seed) {
        csv_keeper kept;
        what.run(seed, &kept);
        write_bytes(files / (std::to_string(seed) + ".csv"), kept.text);
    }
    const double start = processor_s();
    for (int i = 0; i < recordings; ++i) what.run(static_cast<std::uint32_t>(i) % seeds, nullptr);
    const double alone = processor_s() - start;
    for (int i = 0; i < recordings; ++i) {
        const std::uint32_t seed = static_cast<std::uint32_t>(i) % seeds;
        const auto found = mark_recording(task_of(seed), files / (std::to_string(seed) + ".csv"));
        if (!found.standing) std::printf("refused: %s\n", found.refusal.c_str());
    }
    const double marked = processor_s() - start - alone;
    std::printf(
        "a thousand recordings of two minutes, %s: marked in %5.2f s, %4.2f of the model "
        "alone\n",
        what.name, marked, marked / alone);
}

}  // namespace

int main() {
    const two_minutes all[] = {{"good bases", run_good_bases}, {"busy hands", run_busy_hands}};
    for (const two_minutes& each : all) measure(each);
}
