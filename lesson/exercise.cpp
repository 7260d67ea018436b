#include "lesson/exercise.h"

#include "session/keyed_rows.h"

namespace {

struct count_row {
    session_count key;
    bilingual word;
};

constexpr count_row count_rows[] = {{session_count::good, {"bonnes", "good"}},
                                    {session_count::bad, {"mauvaises", "bad"}},
                                    {session_count::incidents, {"incidents", "incidents"}}};
static_assert(one_row_each(count_rows));

}  // namespace

std::string text_of(const exercise_condition& condition) {
    return condition.name + "=" + std::to_string(condition.value);
}

std::string text_of(const station_fault& fault) {
    return fault.name + "=" + std::string(fault_kind_word(fault.kind));
}

std::string_view session_count_word(session_count which, language in) {
    return row_of(count_rows, which).word.in(in);
}

std::optional<session_count> session_count_called(std::string_view word) {
    for (const count_row& row : count_rows)
        if (row.word.french == word) return row.key;
    return std::nullopt;
}

std::int64_t total_points(const exercise& what) {
    std::int64_t total = what.diagnosis ? what.diagnosis->points : 0;
    for (const exercise_goal& each : what.goals) total += each.points;
    for (const exercise_balance& each : what.balances) total += each.points;
    return total;
}
