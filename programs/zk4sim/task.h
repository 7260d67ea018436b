// The exercise that a session is given, where one was asked for.
#pragma once
#include <memory>
#include <optional>
#include <vector>

#include "lesson/examiner.h"
#include "programs/zk4sim/options.h"
#include "session/live_session.h"

class session_task {
public:
    /// `options` must outlive it, and may be filled in later.
    explicit session_task(const zk4sim_options& options) : options_(options) {}

    /// Reads the exercise: the station with which it begins. Throws `failure`.
    [[nodiscard]] std::unique_ptr<station_model> begin();
    /// Who examines the session; null where `begin` was never called.
    [[nodiscard]] exercise_examiner* examiner() { return examiner_ ? &*examiner_ : nullptr; }
    /// The runner of a session that has this task; `run` itself where `begin` was never called. It
    /// must live as long.
    [[nodiscard]] session_runner given_to(session_runner run);
    /// The faults that the exercise hides; nothing where no exercise was asked for. Throws
    /// `failure`.
    [[nodiscard]] std::optional<std::vector<station_fault>> hidden_faults() const;

private:
    [[nodiscard]] exercise read() const;

    const zk4sim_options& options_;
    std::optional<exercise> task_;
    std::optional<exercise_examiner> examiner_;
};
