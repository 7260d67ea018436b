// What the window says of an exercise, in both languages.
#pragma once
#include "lesson/bilingual.h"

enum class exercise_word {
    exercise,
    goals,
    bans,
    balances,
    diagnosis,
    told_faults,
    hidden_faults,
    hold,
    time_left,
    too_late,
    not_reached,
    happened,
    not_failed,
    no_answer_yet,
    no_answer,
    points,
    passed,
    failed,
    question,
    sensor_or_actuator,
    kind,
    answer,
    add,
    remove,
    send,
    close,
    add_tip,
    remove_tip,
    send_tip,
    close_tip,
    count
};

/// UTF-8, a literal.
[[nodiscard]] const char* text_of(exercise_word word, language in);
