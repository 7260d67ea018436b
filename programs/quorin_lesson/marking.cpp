#include "programs/quorin_lesson/marking.h"

#include <algorithm>

#include "recording/hidden_faults.h"
#include "recording/input_bytes.h"
#include "recording/recorded_text.h"
#include "recording/replay.h"
#include "session/failure.h"
#include "session/session_report.h"
#include "session/station_run.h"
#include "workcell/workcell_model.h"

namespace {

std::string sorted_text(const std::vector<station_fault>& faults) {
    std::vector<std::string> words;
    for (const station_fault& each : faults) words.push_back(answer_text({each}));
    std::ranges::sort(words);
    std::string text;
    for (const std::string& each : words) text += (text.empty() ? "" : " ") + each;
    return text.empty() ? "aucune" : text;
}

/// The exercise's, in a line that does not give away the hidden ones.
std::string wanted_text(const exercise_station& station) {
    const std::size_t hidden = station.hidden_faults.size();
    if (hidden == 0) return sorted_text(station.faults);
    const std::string told = station.faults.empty() ? "" : sorted_text(station.faults) + " et ";
    return told + std::to_string(hidden) + (hidden == 1 ? " cachée" : " cachées");
}

std::vector<station_fault> first_faults(const recording_head& head) {
    std::vector<station_fault> faults;
    for (const recorded_event& each : head.events)
        if (each.kind == event_kind::fault)
            if (const auto kind = fault_kind_called(each.text))
                faults.push_back({each.name, *kind});
    return faults;
}

/// Refuses a recording that was set up otherwise than the exercise asks.
class set_up_check {
public:
    set_up_check(const exercise& task, const recording_reader& recording)
        : station_(task.station), name_(recording.name()), head_(recording.head()) {}

    void check(const station_model& model) const {
        compare("station", head_.station, std::string(model.name()));
        for (const station_fact& each : model.facts()) {
            const auto found = std::ranges::find(head_.facts, each.name, &station_fact::name);
            compare(each.name, found == head_.facts.end() ? "rien" : found->value, each.value);
        }
        check_faults();
    }

private:
    // Made without the exercise, a recording tells all of its faults.
    void check_faults() const {
        const std::size_t announced = announced_hidden_faults(head_),
                          hidden = station_.hidden_faults.size();
        std::vector<station_fault> wanted = station_.faults;
        if (announced == 0)
            wanted.insert(wanted.end(), station_.hidden_faults.begin(),
                          station_.hidden_faults.end());
        else
            compare("pannes cachées", std::to_string(announced), std::to_string(hidden));
        const std::string recorded = sorted_text(first_faults(head_));
        if (recorded != sorted_text(wanted))
            differ("pannes", recorded,
                   announced == 0 ? wanted_text(station_) : sorted_text(wanted));
    }
    void compare(const std::string& what, const std::string& recorded,
                 const std::string& wanted) const {
        if (recorded != wanted) differ(what, recorded, wanted);
    }
    [[noreturn]] void differ(const std::string& what, const std::string& recorded,
                             const std::string& wanted) const {
        throw refusal(name_ + ": " + what + ": " + recorded + " dans l'enregistrement, " + wanted +
                      " dans l'exercice");
    }

    const exercise_station& station_;
    const std::string& name_;
    const recording_head& head_;
};

/// What is said of faults while the recording goes on.
class fault_watch : public event_reader {
public:
    explicit fault_watch(std::size_t from_the_start) : from_the_start_(from_the_start) {}

    void read(std::span<const station_event> events) override {
        for (const station_event& each : events) {
            if (const auto fault = told_hidden_fault(each)) told_.push_back(*fault);
            if (each.kind != event_kind::fault || ++seen_ <= from_the_start_) continue;
            if (change_.empty())
                change_ = "la panne de " + std::string(each.name) + " change à " +
                          seconds_text(each.ms) + " s";
        }
    }
    const std::string& change() const { return change_; }
    const std::vector<station_fault>& told() const { return told_; }

private:
    std::size_t from_the_start_, seen_ = 0;
    std::string change_;
    std::vector<station_fault> told_;
};

/// To the recording's end, or to the first difference.
void run_through(station_run& run, replay& again) {
    again.before_begin(run);
    run.begin(again.title());
    while (again.difference().empty()) {
        if (const auto why = again.before_step(run)) return run.finish(*why);
        run.step([&](int output) { return again.command(output); });
    }
}

exercise_standing judged(const exercise& task, const std::string& file) {
    input_bytes bytes(file);
    recording_reader recording(file, bytes);
    workcell_model model(task.station.seed, {task.station.bases, task.station.parts});
    set_up_check(task, recording).check(model);
    const bool hides = announced_hidden_faults(recording.head()) > 0;
    station_run run(model);
    replay again(recording);
    if (hides) again.hide(task.station.hidden_faults);
    judge judge(task);
    fault_watch faults(first_faults(recording.head()).size());
    run.add_reader(again);
    again.add_reader(judge);
    again.add_reader(faults);
    run_through(run, again);
    if (!again.difference().empty()) throw refusal(again.difference());
    if (!faults.change().empty()) throw refusal(file + ": " + faults.change());
    if (hides && recording.whole() &&
        sorted_text(faults.told()) != sorted_text(task.station.hidden_faults))
        throw refusal(file + ": ses pannes cachées ne sont pas celles de l'exercice");
    judge.end(again.cut_within_step() ? run.ms() - step_ms : run.ms());
    return judge.standing();
}

}  // namespace

std::string marked_recording::result() const {
    if (!standing) return "refuse";
    return standing->passed ? "reussi" : "echoue";
}

marked_recording mark_recording(const exercise& task, const std::string& file) {
    try {
        return {file, judged(task, file)};
    } catch (const failure& why) {
        return {file, std::nullopt, recorded_name(why.why)};
    }
}
