// An exercise as the task of a session: the judge, and what it adds to the session's events.
#pragma once
#include <deque>
#include <string>
#include <vector>

#include "lesson/judge.h"
#include "session/session_examiner.h"

class exercise_examiner : public session_examiner {
public:
    /// `task` must outlive it. The verdict is told in that language.
    exercise_examiner(const exercise& task, language in);

    /// Where the exercise stands, for whoever shows it.
    [[nodiscard]] const exercise_standing& progress() const { return judge_.standing(); }
    /// What it was made with.
    [[nodiscard]] const exercise& task() const { return task_; }
    /// The last answer to its diagnosis, whether a step has seen it or not: "b2s=stuck1".
    [[nodiscard]] const std::string& last_answer() const {
        return answers_.empty() ? judge_.standing().answer : answers_.back();
    }

    [[nodiscard]] std::span<const station_event> introduce() override;
    [[nodiscard]] std::span<const station_event> examine(
        std::int64_t ms, std::span<const station_event> happened) override;
    [[nodiscard]] std::span<const station_event> conclude(std::int64_t ms) override;
    [[nodiscard]] std::vector<station_fault> hidden_faults() const override;
    [[nodiscard]] bool over() const override { return judge_.over(); }
    [[nodiscard]] bool asks_for_faults() const override { return task_.diagnosis.has_value(); }
    void take_answer(const std::vector<station_fault>& faults) override;
    [[nodiscard]] status standing() const override;
    [[nodiscard]] bool passed() const override { return judge_.standing().passed; }
    [[nodiscard]] std::vector<std::string> verdict() const override;

private:
    void begin_to_speak();
    void say(std::int64_t ms, std::string_view name, const std::string& text);
    void say_number(std::int64_t ms, std::string_view name, std::size_t number);
    void say_what_is_new(std::int64_t ms);

    const exercise& task_;
    const language in_;
    judge judge_;
    // Given since the last step.
    std::vector<std::string> answers_;
    std::size_t goals_told_ = 0;
    std::vector<bool> bans_told_;
    // What was said last: events and their texts.
    std::vector<station_event> said_;
    std::deque<std::string> texts_;
};
