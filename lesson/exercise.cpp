#include "lesson/exercise.h"

std::string text_of(const exercise_condition& condition) {
    return condition.name + "=" + std::to_string(condition.value);
}

std::int64_t total_points(const exercise& what) {
    std::int64_t total = what.diagnosis ? what.diagnosis->points : 0;
    for (const exercise_goal& each : what.goals) total += each.points;
    for (const exercise_balance& each : what.balances) total += each.points;
    return total;
}
