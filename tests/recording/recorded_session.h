// Sessions of the ZK4 station that are recorded in memory, and replayed from it.
#pragma once
#include <functional>
#include <random>
#include <sstream>
#include <string>

#include "recording/csv_form.h"
#include "recording/replay.h"
#include "session/failure.h"
#include "workcell/workcell_facts.h"

/// Keeps what it reads as CSV.
struct csv_keeper : event_reader {
    void read(std::span<const station_event> events) override { text += form.text_of(events); }
    csv_form form;
    std::string text;
};

/// What came of a replay.
struct replayed {
    /// Why the file was refused, the first difference, or "".
    std::string complaint;
    /// What was found to be as recorded, as CSV.
    std::string out;
    /// The words that ended it.
    std::string end;
};

inline replayed replay_of(const std::string& recording,
                          const std::vector<station_fault>& hidden = {}) {
    replayed result;
    std::stringbuf bytes(recording);
    csv_keeper out;
    try {
        recording_reader reader("f", bytes);
        const auto model = workcell_of(reader.head().facts);
        station_run run(*model);
        replay again(reader);
        again.hide(hidden);
        run.add_reader(again);
        again.add_reader(out);
        again.before_begin(run);
        run.begin(again.title());
        while (again.difference().empty() && result.end.empty()) {
            if (const auto why = again.before_step(run))
                run.finish(result.end = *why);
            else
                run.step([&](int output) { return again.command(output); });
        }
        result.complaint = again.difference();
    } catch (const failure& why) {
        result.complaint = why.why;
    }
    result.out = out.text;
    return result;
}

/// Hands that work a station at random: commands of any value, the desk, faults.
class random_hands {
public:
    explicit random_hands(std::uint32_t seed) : random_(seed) {}

    void work(station_run& run) {
        if (random_() % 20 == 0) command();
        if (random_() % 200 == 0)
            run.set_desk({random_() % 2 == 0, random_() % 2 == 0, random_() % 4 == 0});
        if (random_() % 150 == 0) change_a_fault(run);
    }
    std::int32_t command(int output) const { return given_[static_cast<std::size_t>(output)]; }

    void change_a_fault(station_run& run) {
        const bool sensor = random_() % 2 == 0;
        const name_span names = sensor ? run.model().inputs() : run.model().outputs();
        const std::string name(names[random_() % names.size()]);
        const auto kind =
            static_cast<fault_kind>(random_() % static_cast<unsigned>(fault_kind::count));
        if (random_() % 3 == 0 || !run.set_fault({name, kind})) (void)run.end_fault(name);
    }

private:
    void command() {
        static constexpr std::int32_t values[] = {0, 1, 1, 1, 1, 2, -1, INT32_MIN, INT32_MAX};
        given_[random_() % given_.size()] = values[random_() % std::size(values)];
    }

    std::mt19937 random_;
    std::array<std::int32_t, static_cast<std::size_t>(station_output::count)> given_ = {};
};

/// A session of so many steps under random hands, as CSV.
inline std::string recorded_session(std::uint32_t seed, int steps, const std::string& title = "") {
    workcell_model model(seed, {static_cast<int>(seed % 5), static_cast<int>(seed % 7)});
    station_run run(model);
    csv_keeper kept;
    run.add_reader(kept);
    random_hands hands(seed);
    for (auto faults = seed % 4; faults > 0; --faults) hands.change_a_fault(run);
    run.begin(title);
    for (int i = 0; i < steps; ++i) {
        hands.work(run);
        run.step([&](int output) { return hands.command(output); });
    }
    run.finish("fin demandée");
    return kept.text;
}
