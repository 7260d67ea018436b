// What the window says, in both languages. The labels and tooltips of what can be pressed are in
// window_actions.h, the advice on incidents in incident_advice.h, faults in fault_labels.h.
#pragma once
#include "lesson/bilingual.h"

enum class window_word {
    desk,
    time,
    production,
    faults,
    whole_window,
    desk_tip,
    sensors,
    actuators,
    good,
    bad,
    incidents,
    no_incident,
    nothing_changed,
    running,
    paused,
    emergency,
    dead_link,
    replay,
    inputs,
    outputs,
    speed_tip,
    moment_tip,
    signal_tip,
    sticky_tip,
    init_tip,
    go_tip,
    quit_tip,
    page_back_tip,
    page_on_tip,
    exercise_over,
    journal_title,
    verdict_title,
    journal_time,
    journal_kind,
    journal_name,
    journal_value,
    journal_limit,
    station,
    by_hand,
    count
};

/// UTF-8, a literal.
[[nodiscard]] const char* text_of(window_word word, language in);
