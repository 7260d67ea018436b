// The signs before a board's lines. In grey tones, too, each is told from the others by its form.
#pragma once
#include <FL/Enumerations.H>

#include "station_view/exercise_board.h"
#include "station_view/window_layout.h"

struct sign_look {
    board_sign key;
    /// Draws it in a square; null: there is none.
    void (*drawn)(const window_layout::area& at);
    Fl_Color text, note, behind;
    bool bold;
};

[[nodiscard]] const sign_look& look_of(board_sign sign);

/// White, for the coloured band of a result.
void draw_result_sign(const window_layout::area& at, bool passed);
