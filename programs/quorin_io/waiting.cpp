#include "programs/quorin_io/waiting.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>

#include "programs/quorin_io/link_commands.h"
#include "session/failure.h"

namespace {

constexpr int look_pause_ms = 2;

/// What ends a wait.
struct wait_rules {
    const condition_list& goals;
    bool any;  ///< One of the goals will do.
    const condition_list& unless;
    std::optional<double> timeout_s;
};

std::string joined(const std::vector<std::string>& texts, const char* between) {
    std::string all;
    for (const std::string& each : texts) all += (all.empty() ? "" : between) + each;
    return all;
}

failure not_reached(const std::string& why) { return {exit_status::not_reached, why}; }

bool reached(const wait_rules& rules) {
    return rules.any ? std::ranges::any_of(rules.goals, &condition::holds)
                     : std::ranges::all_of(rules.goals, &condition::holds);
}

void wait(io_observer& segment, const wait_rules& rules) {
    for (const stopwatch since;; pause_between_looks()) {
        // The end is looked for first: values that still stand after it are nobody's.
        refuse_after_the_end(segment);
        // The time is taken before the look, so that the last look comes after the time.
        const double waited_s = since.seconds();
        segment.look();
        if (reached(rules)) return;
        const auto ended = std::ranges::find_if(rules.unless, &condition::holds);
        if (ended != rules.unless.end())
            throw not_reached("condition de --unless: " + ended->told());
        if (rules.timeout_s && waited_s >= *rules.timeout_s)
            throw not_reached("délai écoulé, il manque: " +
                              joined(told_missing(rules.goals), ", "));
    }
}

}  // namespace

void pause_between_looks() { usleep(look_pause_ms * 1000); }

void pause_between_printed_looks() {
    // Asked for nothing, it still tells that its reader has gone.
    pollfd output{STDOUT_FILENO, 0, 0};
    if (poll(&output, 1, look_pause_ms) > 0) throw output_refusal();
}

void wait_until_all_hold(io_observer& segment, const condition_list& conditions,
                         std::optional<double> timeout_s) {
    wait(segment, {conditions, false, {}, timeout_s});
}

void wait_for_conditions(io_observer& segment, const io_request& asked) {
    const condition_list goals = read_conditions(segment, asked.operands);
    const condition_list unless = read_conditions(segment, asked.of(option_key::unless));
    wait(segment,
         {goals, asked.given(option_key::any), unless, asked.seconds(option_key::timeout)});
}

void expect_conditions(io_observer& segment, const io_request& asked) {
    const condition_list conditions = read_conditions(segment, asked.operands);
    const double length_s = asked.seconds(option_key::length).value_or(0);
    for (const stopwatch since;; pause_between_looks()) {
        refuse_after_the_end(segment);
        const double held_s = since.seconds();
        segment.look();
        const std::vector<std::string> missing = told_missing(conditions);
        if (!missing.empty())
            throw not_reached("ne tient pas: " + joined(missing, "\nne tient pas: "));
        if (held_s >= length_s) return;
    }
}
