// Lines of an exercise's board, drawn with their signs in a size that the panel chooses; they
// scroll where they do not fit.
#pragma once
#include <FL/Fl_Scroll.H>

#include <vector>

#include "station_view/exercise_board.h"

class board_sheet;

class board_view : public Fl_Scroll {
public:
    /// In the group being filled; it has no place yet.
    board_view();

    /// How high these lines are in a view of that width, as far as `most`: of more than that only
    /// that it is more.
    [[nodiscard]] static int height_of(const std::vector<board_line>& lines, int w, int text_px,
                                       int most);

    /// Draws again only where something differs.
    void show_lines(const std::vector<board_line>& lines);
    void stand(int x, int y, int w, int h, int text_px);
    /// Scrolls as little as is needed for that line to be seen.
    void bring_into_view(int line);

    void resize(int x, int y, int w, int h) override;
    int handle(int event) override;
    void draw() override;

private:
    void lay_out();

    board_sheet* sheet_;
};
