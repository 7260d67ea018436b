#include "lesson/examiner.h"

#include "lesson/verdict.h"

exercise_examiner::exercise_examiner(const exercise& task, language in)
    : task_(task), in_(in), judge_(task) {}

void exercise_examiner::begin_to_speak() {
    said_.clear();
    texts_.clear();
}

void exercise_examiner::say(std::int64_t ms, std::string_view name, const std::string& text) {
    texts_.push_back(text);
    said_.push_back({ms, event_kind::exercise, name, 0, texts_.back()});
}

void exercise_examiner::say_number(std::int64_t ms, std::string_view name, std::size_t number) {
    said_.push_back({ms, event_kind::exercise, name, static_cast<std::int64_t>(number), {}});
}

std::span<const station_event> exercise_examiner::introduce() {
    begin_to_speak();
    goals_told_ = 0;
    bans_told_.assign(task_.bans.size(), false);
    // They are told for as long as the first block is: the task's own texts.
    said_.push_back({0, event_kind::exercise, "titre", 0, task_.title.french});
    said_.push_back({0, event_kind::exercise, "empreinte", 0, task_.digest});
    if (const auto hidden = task_.station.hidden_faults.size(); hidden > 0)
        say_number(0, "pannes_cachees", hidden);
    return said_;
}

std::span<const station_event> exercise_examiner::examine(std::int64_t ms,
                                                          std::span<const station_event> happened) {
    begin_to_speak();
    judge_.read(happened);
    if (!judge_.over())
        for (const std::string& each : answers_) say(ms, "diagnostic", each);
    answers_.clear();
    judge_.read(said_);
    judge_.look_until(ms);
    say_what_is_new(ms);
    return said_;
}

void exercise_examiner::say_what_is_new(std::int64_t ms) {
    const exercise_standing& standing = judge_.standing();
    for (; goals_told_ < task_.goals.size() && standing.goals[goals_told_].reached_ms;
         ++goals_told_)
        say_number(ms, "but", goals_told_ + 1);
    for (std::size_t i = 0; i < bans_told_.size(); ++i) {
        if (bans_told_[i] || !standing.bans[i]) continue;
        bans_told_[i] = true;
        say_number(ms, "jamais", i + 1);
    }
}

std::span<const station_event> exercise_examiner::conclude(std::int64_t ms) {
    begin_to_speak();
    judge_.end(ms);
    say(ms, "points", standing().points);
    say(ms, "verdict", passed() ? "reussi" : "echoue");
    for (const station_fault& each : task_.station.hidden_faults)
        say(ms, "panne", answer_text({each}));
    return said_;
}

std::vector<station_fault> exercise_examiner::hidden_faults() const {
    return task_.station.hidden_faults;
}

void exercise_examiner::take_answer(const std::vector<station_fault>& faults) {
    answers_.push_back(answer_text(faults));
}

session_examiner::status exercise_examiner::standing() const {
    const exercise_standing& now = judge_.standing();
    return {task_.title.french, now.next_goal > 0 ? std::to_string(now.next_goal) : "",
            std::to_string(now.points) + "/" + std::to_string(now.total)};
}

std::vector<std::string> exercise_examiner::verdict() const {
    std::vector<std::string> lines;
    for (const verdict_sentence& each : verdict_sentences(task_, judge_.standing(), in_))
        lines.push_back(each.text);
    return lines;
}
