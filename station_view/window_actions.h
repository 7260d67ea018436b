// What can be pressed in the window, by the mouse or by a key of its own.
#pragma once
#include <optional>
#include <string>

#include "lesson/bilingual.h"

enum class window_action {
    start_cycle,
    stop_cycle,
    emergency,
    unlock,
    pause,
    step,
    next_change,
    slower,
    faster,
    faults,
    journal,
    drawing_alone,
    diagnosis,
    verdict,
    count
};

/// What is done to a key; one that is held repeats.
enum class key_press { down, repeat, up };

/// How an action looks and which key does it.
struct action_row {
    /// The row's place.
    window_action key;
    /// The toolkit's number of the key: a character or a function key; and another one for the
    /// same.
    int symbol, other_symbol;
    /// Whether it is that key with Shift, and whether a key that is held does it again and again.
    bool shift, repeats;
    /// The key as a tooltip names it, the button's label, and what it does.
    bilingual key_name, label, meaning;
};

/// There is one for each.
[[nodiscard]] const action_row& row_of_action(window_action action);
/// What it does and its key: "Pause ou reprise (touche P)".
[[nodiscard]] std::string tooltip_of(window_action action, language in);
/// The action of a key that goes down, if it has one.
[[nodiscard]] std::optional<window_action> action_of_key(int symbol, bool shift);
