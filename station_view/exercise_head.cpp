#include "station_view/exercise_head.h"

#include <FL/fl_draw.H>

#include <string>
#include <tuple>

#include "station_view/board_signs.h"
#include "station_view/window_style.h"

namespace {

int title_px(int text_px) { return text_px * 6 / 5; }
int row_of_px(int text_px) { return text_px * 2; }

int width_of(const std::string& text) {
    return static_cast<int>(fl_width(text.data(), static_cast<int>(text.size())) + 0.5);
}

void draw_in_row(const std::string& text, int x, int top, int row, int px) {
    fl_draw(text.data(), static_cast<int>(text.size()), x, top + row / 2 + px * 4 / 10);
}

/// What can be seen of a text in that room, ended by three points where it is cut.
std::string cut_to(std::string text, int room) {
    if (width_of(text) <= room) return text;
    while (!text.empty() && width_of(text + "...") > room) {
        while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
            text.pop_back();
        if (!text.empty()) text.pop_back();
    }
    return text + "...";
}

}  // namespace

int exercise_head::height_of(int text_px, bool in_one_row) {
    return row_of_px(text_px) * (in_one_row ? 1 : 2);
}

void exercise_head::show_board(const exercise_board& board) {
    const bool differs = std::tie(board.title, board.points, board.time, board.result) !=
                         std::tie(board_.title, board_.points, board_.time, board_.result);
    if (!differs) return;
    board_ = board;
    copy_tooltip(board.title.c_str());
    redraw();
}

void exercise_head::stand(int x, int y, int w, int text_px, bool in_one_row) {
    text_px_ = text_px;
    in_one_row_ = in_one_row;
    resize(x, y, w, height_of(text_px, in_one_row));
    redraw();
}

void exercise_head::draw() {
    fl_push_clip(x(), y(), w(), h());
    const bool over = board_.result != board_result::none;
    const int row = row_of_px(text_px_), top = in_one_row_ ? y() : y() + row;
    fl_color(window_style::paper);
    fl_rectf(x(), y(), w(), h());
    if (over) {
        fl_color(board_.result == board_result::passed ? window_style::green : window_style::red);
        fl_rectf(x(), top, w(), row);
    }
    const int right = x() + w() - text_px_ / 2;
    const int left = over ? draw_result(right, top) : draw_time(right, top);
    draw_title(in_one_row_ ? left : right);
    fl_pop_clip();
}

void exercise_head::draw_title(int right) const {
    const bool on_band = in_one_row_ && board_.result != board_result::none;
    const int left = x() + text_px_ / 2;
    const int room = right - left - text_px_;
    int px = title_px(text_px_);
    fl_font(FL_HELVETICA_BOLD, px);
    while (px > text_px_ && width_of(board_.title) > room) fl_font(FL_HELVETICA_BOLD, --px);
    fl_color(on_band ? static_cast<Fl_Color>(FL_WHITE) : window_style::ink);
    draw_in_row(cut_to(board_.title, room), left, y(), row_of_px(text_px_), px);
}

/// "✓ Réussi   15 / 15 points" at the right; where it begins.
int exercise_head::draw_result(int right, int top) const {
    const int px = title_px(text_px_), row = row_of_px(text_px_);
    fl_font(FL_HELVETICA_BOLD, px);
    fl_color(FL_WHITE);
    const int points_x = right - width_of(board_.points),
              words_x = (in_one_row_ ? points_x - px * 2 - width_of(board_.time)
                                     : x() + text_px_ / 2 + px * 3 / 2);
    draw_in_row(board_.points, points_x, top, row, px);
    draw_in_row(board_.time, words_x, top, row, px);
    const int sign_x = words_x - px * 3 / 2;
    draw_result_sign({sign_x, top + (row - px * 5 / 4) / 2, px * 5 / 4, px * 5 / 4},
                     board_.result == board_result::passed);
    return sign_x;
}

/// "3 / 15 points   reste 58 s" at the right; where it begins.
int exercise_head::draw_time(int right, int top) const {
    const int px = title_px(text_px_), row = row_of_px(text_px_);
    fl_font(FL_HELVETICA_BOLD, px);
    const int time_x = right - width_of(board_.time);
    fl_color(window_style::ink);
    draw_in_row(board_.time, time_x, top, row, px);
    int points_x = x() + text_px_ / 2;
    if (in_one_row_) points_x = time_x - width_of(board_.points) - px * 2;
    fl_color(window_style::blue);
    draw_in_row(board_.points, points_x, top, row, px);
    return points_x;
}
