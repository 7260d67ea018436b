// The head of the exercise's panel: its title, the points, what is left of its time; at its end a
// band that says whether it is passed.
#pragma once
#include <FL/Fl_Widget.H>

#include "station_view/exercise_board.h"

class exercise_head : public Fl_Widget {
public:
    /// In the group being filled; it has no place yet.
    exercise_head() : Fl_Widget(0, 0, 10, 10) {}

    void show_board(const exercise_board& board);
    /// Beside the title where `in_one_row`, else below it.
    void stand(int x, int y, int w, int text_px, bool in_one_row);
    [[nodiscard]] static int height_of(int text_px, bool in_one_row);

    void draw() override;

private:
    void draw_title(int right) const;
    int draw_result(int right, int top) const;
    int draw_time(int right, int top) const;

    exercise_board board_;
    int text_px_ = 13;
    bool in_one_row_ = false;
};
