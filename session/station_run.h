// A station's history: the model stepped under its commands, desk and faults, told as events.
//
// No clock, no link, no window: whoever calls says when a step is made and what is commanded. The
// same calls give the same events, bit for bit.
#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "session/faults.h"
#include "session/session_examiner.h"
#include "session/station_events.h"
#include "session/station_model.h"
#include "session/step_clock.h"

class station_run {
public:
    /// What an output is commanded, by its place on the link.
    using command_source = std::function<std::int32_t(int output)>;

    /// `model` must outlive the run, and is stepped by nobody else.
    explicit station_run(station_model& model);
    station_run(const station_run&) = delete;
    station_run& operator=(const station_run&) = delete;

    /// Adds a reader, which must outlive the run. Readers are handed each step's events in the
    /// order in which they were added.
    void add_reader(event_reader& reader) { readers_.push_back(&reader); }

    /// Has the session examined by `examiner`, which must outlive the run: what it says is told
    /// among the events, and the faults that it hides are set. Before `begin`.
    void set_examiner(session_examiner& examiner) { examiner_ = &examiner; }
    /// Sets a fault that is told nowhere, as `faulty_station::set_fault` does. Before `begin`.
    [[nodiscard]] bool hide_fault(const station_fault& fault) {
        return model_.set_fault(fault.name, fault.kind);
    }

    /// Tells the first block: the state before the first step, faults set so far included. Once,
    /// before any step. An empty title is not told.
    void begin(const std::string& title);
    /// One step of 10 ms: takes faults, desk and commands as they stand, steps the model, and hands
    /// all that happened to the readers.
    void step(const command_source& commands);
    /// Goes back to before `begin`, which tells the first block again: its readers see a new run
    /// begin. False where the model cannot, and then nothing was done.
    [[nodiscard]] bool restart();
    /// Tells the end, at the time of the last step's end. Once; nothing may follow.
    void finish(const std::string& why);

    /// Sets a fault, in the place of any that the name had, or ends one: from the next step on.
    /// Setting is false, and nothing done, where the kind does not fit the name.
    [[nodiscard]] bool set_fault(const station_fault& fault);
    /// False for a name that the station does not have.
    [[nodiscard]] bool end_fault(std::string_view name);
    /// The faults set, taken by a step or not: sensors first, in the order of the link. Hidden ones
    /// are not among them.
    std::vector<station_fault> faults() const;

    /// The desk, from the next step on.
    void set_desk(const station_desk& desk) { desk_ = desk; }
    /// As it was set last, whether a step has taken it or not.
    const station_desk& desk() const { return desk_; }

    /// The station with its faults: what it says of its sensors is what the link says.
    const station_model& model() const { return model_; }
    /// Simulated time: the last step's end.
    std::int64_t ms() const { return steps_ * step_ms; }
    /// Whether nothing is commanded, and nothing has happened for a second: no event.
    bool resting() const;
    /// What the station has made, as of the last step.
    station_counts counts() const { return model_.counts(); }
    /// How many so far.
    int incidents() const { return incidents_; }
    /// Its text, in French; empty as long as there was none.
    const std::string& last_incident() const { return last_incident_; }

private:
    /// A thing that may have a fault: the one that is set, and the one that the next step takes.
    struct faulty_thing {
        std::string_view name;
        std::optional<fault_kind> set, wanted;
    };

    faulty_thing* thing_named(std::string_view name);
    void say(std::span<const station_event> said);
    void examine();
    void tell_state();
    void take_faults();
    void take_desk();
    void take_commands(const command_source& commands);
    void tell_incidents();
    void tell_inputs();
    void tell_counts();
    void tell_word(event_kind kind, std::string_view name, std::string_view text);
    void tell_number(event_kind kind, std::string_view name, std::int64_t value, int index = -1);
    void tell_changed_count(std::string_view name, int now, int& before);
    void hand_over();

    faulty_station model_;
    session_examiner* examiner_ = nullptr;
    std::vector<event_reader*> readers_;
    std::vector<station_event> events_;
    std::vector<faulty_thing> things_;
    std::vector<std::int32_t> commands_;
    std::vector<int> sensors_;
    station_desk desk_, taken_desk_;
    std::int64_t steps_ = 0, last_busy_step_ = 0;
    station_counts told_counts_;
    int incidents_ = 0, told_incidents_ = 0;
    std::string last_incident_;
};
