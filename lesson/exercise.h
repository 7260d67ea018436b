// An exercise: what a student is asked to do on a station, and by what it is judged.
//
// Plain data, as lesson/exercise_file.h reads it from a file: every name is known to the station,
// and times are whole simulated milliseconds.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lesson/bilingual.h"
#include "session/faults.h"

/// A text for the student; `english` is empty where the file has none, and `french` serves then.
struct lesson_text {
    /// UTF-8.
    std::string french, english;
    /// The text of that language, or the French one.
    [[nodiscard]] const std::string& in(language wanted) const {
        return wanted == language::english && !english.empty() ? english : french;
    }
    bool operator==(const lesson_text&) const = default;
};

/// What a condition looks at.
enum class condition_place { input, output, desk };

/// "b1s=1": the value of a thing at the end of a step: an input as published, an output or desk
/// button as the step was given it.
struct exercise_condition {
    /// Where the thing is looked up: a name may stand for an input and an output.
    condition_place place;
    /// As the file writes it; of the desk "dc", "ac" or "atu".
    std::string name;
    /// 0 or 1 for an input and the desk, any for an output.
    std::int32_t value;
    /// Of an input or output: its place on the link; of the desk its button's, in the order dc, ac,
    /// atu.
    int index;
    bool operator==(const exercise_condition&) const = default;
};

/// As the file writes it: "b1s=1".
[[nodiscard]] std::string text_of(const exercise_condition& condition);
/// The same for a fault: "b2s=stuck1".
[[nodiscard]] std::string text_of(const station_fault& fault);

/// `[[but]]`: goals are reached one after the other.
struct exercise_goal {
    /// What the student reads of it.
    lesson_text text;
    /// All at once; at least one.
    std::vector<exercise_condition> conditions;
    /// For so long without a break.
    std::int64_t hold_ms = 0;
    /// Since the goal before, or the start; none: no limit.
    std::optional<std::int64_t> within_ms;
    /// 0 to `most_exercise_points`; none where it is reached too late.
    std::int64_t points = 1;
    bool operator==(const exercise_goal&) const = default;
};

/// `[[jamais]]`: what must not happen.
struct exercise_ban {
    /// What the student reads of it.
    lesson_text text;
    /// All at once; at least one.
    std::vector<exercise_condition> conditions;
    /// Taken off once.
    std::int64_t penalty = 0;
    bool operator==(const exercise_ban&) const = default;
};

/// `[[indice]]`: a hint, told when it happened, and nothing else.
struct exercise_hint {
    /// What the verdict says of it.
    lesson_text text;
    /// All at once; at least one.
    std::vector<exercise_condition> conditions;
    /// For so long without a break.
    std::int64_t hold_ms = 0;
    bool operator==(const exercise_hint&) const = default;
};

/// What a `[[bilan]]` counts, in the order in which sessions tell them.
enum class session_count { good, bad, incidents, count };

/// `[[bilan]]`: how the session must have ended. One limit at least is there.
struct exercise_balance {
    /// What the student reads of it.
    lesson_text text;
    /// What is counted, from the session's start.
    session_count count = session_count::good;
    /// Both included; none: no limit on that side.
    std::optional<std::int64_t> at_least, at_most;
    /// 0 to `most_exercise_points`.
    std::int64_t points = 1;
    bool operator==(const exercise_balance&) const = default;
};

/// `[diagnostic]`: the faults that the student must name; at least one.
struct exercise_diagnosis {
    /// In any order; the answer must name all of them and no other.
    std::vector<station_fault> faults;
    /// 0 to `most_exercise_points`.
    std::int64_t points = 1;
    bool operator==(const exercise_diagnosis&) const = default;
};

/// `[station]`: what the session begins with.
struct exercise_station {
    /// Chooses where the first base lies.
    std::uint64_t seed = 0;
    /// 0 to `most_exercise_supplies`.
    int bases = 1000, parts = 1000;
    /// The exercise is over then at the latest; none: no limit.
    std::optional<std::int64_t> duration_ms;
    /// Told at the start; and told in the verdict only.
    std::vector<station_fault> faults, hidden_faults;
    bool operator==(const exercise_station&) const = default;
};

struct exercise {
    /// One line.
    lesson_text title;
    /// Several lines, each with its line feed.
    lesson_text task;
    /// With what the station is set up.
    exercise_station station;
    /// Each in the order of the file.
    std::vector<exercise_goal> goals;
    std::vector<exercise_ban> bans;
    std::vector<exercise_hint> hints;
    std::vector<exercise_balance> balances;
    /// None: no fault is asked for.
    std::optional<exercise_diagnosis> diagnosis;
    /// SHA-256 of the file's bytes, 64 hexadecimal digits.
    std::string digest;
    bool operator==(const exercise&) const = default;
};

/// "bonnes", "mauvaises", "incidents": in French as the file and the recordings write it.
[[nodiscard]] std::string_view session_count_word(session_count which,
                                                  language in = language::french);
/// What is written so in French; nothing for any other word.
[[nodiscard]] std::optional<session_count> session_count_called(std::string_view word);

/// What all of it together is worth: the points of goals, balances and diagnosis.
[[nodiscard]] std::int64_t total_points(const exercise& what);
