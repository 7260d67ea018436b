// What a session does for those who ask through its control socket, one function for each word.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "session/control_socket.h"
#include "session/session_options.h"
#include "session/station_run.h"
#include "session/step_clock.h"

class control_requests {
public:
    /// All of these must live as long.
    control_requests(station_run& run, step_clock& time, const session_options& options)
        : run_(run), time_(time), options_(options) {}

    /// From now on nobody who asks may change the desk or the faults, for this reason.
    void refuse_changes(const std::string& why) { fixed_ = why; }

    /// From now on nobody who asks may change the faults, and `examiner`, which must live as long,
    /// is asked how the task stands and takes answers.
    void set_examiner(session_examiner& examiner) { examiner_ = &examiner; }

    /// Carries out a request, words with a blank between two; never throws. Nothing when the answer
    /// has to wait for steps that it asked for. Once the session is `over` it tells its status
    /// alone.
    [[nodiscard]] std::optional<control_answer> carry_out(const std::string& request, bool over);
    /// The answer for who waits for steps, once it is known.
    [[nodiscard]] std::optional<control_answer> later_answer(bool over) const;

private:
    struct row;
    static const row rows[];
    using words = std::vector<std::string>;
    using answer = std::optional<control_answer>;

    answer find_and_carry_out(const std::string& request);
    answer status(const words& operands);
    answer desk(const words& operands);
    answer fault(const words& operands);
    answer diagnose(const words& operands);
    answer pause(const words& operands);
    answer resume(const words& operands);
    answer speed(const words& operands);
    answer step(const words& operands);
    answer end(const words& operands);

    station_run& run_;
    step_clock& time_;
    const session_options& options_;
    session_examiner* examiner_ = nullptr;
    bool over_ = false;
    std::string fixed_;
    // When the steps asked for are over.
    std::int64_t goal_ms_ = 0;
};
