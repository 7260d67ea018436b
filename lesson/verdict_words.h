// What a verdict says, in both languages, as sentences with places for names and times.
#pragma once
#include <initializer_list>
#include <string>

#include "lesson/bilingual.h"

enum class verdict_word {
    task,
    reached,
    too_late,
    missing,
    missing_since,
    held_too_short,
    not_its_turn,
    banned,
    banned_for,
    not_banned,
    hint,
    counts,
    balance_kept,
    balance_failed,
    at_least,
    at_most,
    hidden_faults,
    right_answer,
    wrong_answer,
    no_answer,
    points,
    passed,
    failed,
    and_then,
    count
};

/// The sentence, each "{n}" in it replaced by the n-th of the values, from 0.
[[nodiscard]] std::string said(verdict_word word, language in,
                               std::initializer_list<std::string> values);
