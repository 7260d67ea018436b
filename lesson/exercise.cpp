#include "lesson/exercise.h"

std::string text_of(const exercise_condition& condition) {
    return condition.name + "=" + std::to_string(condition.value);
}
