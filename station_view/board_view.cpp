#include "station_view/board_view.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <limits>

#include "station_view/board_signs.h"
#include "station_view/window_style.h"

namespace {

/// A line as it is drawn: broken, with the room that its note takes.
struct laid_line {
    std::vector<std::string> rows;
    int top = 0, h = 0;
};

Fl_Font font_of(const board_line& line) {
    return look_of(line.sign).bold ? FL_HELVETICA_BOLD : FL_HELVETICA;
}

int text_width(std::string_view text) {
    return static_cast<int>(fl_width(text.data(), static_cast<int>(text.size())) + 0.5);
}

int row_height(int text_px) { return text_px * 13 / 10; }
int gap(int text_px) { return text_px * 3 / 10; }
int sign_width(int text_px) { return text_px * 16 / 10; }
int indent_of(const board_line& line, int text_px) {
    return look_of(line.sign).drawn ? sign_width(text_px) : 0;
}
int note_width(const board_line& line, int text_px) {
    if (line.note.empty()) return 0;
    fl_font(FL_HELVETICA_BOLD, text_px);
    return text_width(line.note) + text_px / 2;
}

std::vector<laid_line> laid_out(const std::vector<board_line>& lines, int w, int text_px,
                                int most = std::numeric_limits<int>::max()) {
    std::vector<laid_line> found;
    int top = gap(text_px);
    for (const board_line& each : lines) {
        if (top > most) break;
        const int edges = text_px,
                  room = w - edges - indent_of(each, text_px) - note_width(each, text_px);
        fl_font(font_of(each), text_px);
        laid_line laid{wrapped(each.text, std::max(room, text_px), text_width), top, 0};
        if (each.sign == board_sign::heading && !found.empty()) laid.top += gap(text_px);
        const bool blank = each.text.empty();
        laid.h = blank ? row_height(text_px) / 2
                       : static_cast<int>(laid.rows.size()) * row_height(text_px) + gap(text_px);
        top = laid.top + laid.h;
        found.push_back(std::move(laid));
    }
    return found;
}

int height_of_laid(const std::vector<laid_line>& lines, int text_px) {
    return lines.empty() ? 0 : lines.back().top + lines.back().h + gap(text_px);
}

}  // namespace

class board_sheet : public Fl_Widget {
public:
    board_sheet() : Fl_Widget(0, 0, 1, 1) {}

    void draw() override {
        fl_color(window_style::white);
        fl_rectf(x(), y(), w(), h());
        for (std::size_t i = 0; i < laid.size(); ++i) draw_line(lines[i], laid[i]);
    }

    std::vector<board_line> lines;
    std::vector<laid_line> laid;
    int text_px = window_style::text_px;

private:
    void draw_line(const board_line& line, const laid_line& at) const {
        if (!fl_not_clipped(x(), y() + at.top, w(), at.h)) return;
        const sign_look& look = look_of(line.sign);
        const int top = y() + at.top, left = x() + text_px / 2;
        if (look.behind != window_style::white) {
            fl_color(look.behind);
            fl_rectf(x(), top, w(), at.h);
        }
        const int row = row_height(text_px),
                  base = top + (gap(text_px) + row) / 2 + text_px * 4 / 10;
        if (look.drawn)
            look.drawn({left, top + (gap(text_px) + row - text_px) / 2, text_px, text_px});
        fl_font(font_of(line), text_px);
        fl_color(look.text);
        int y_of_row = base;
        for (const std::string& each : at.rows) {
            if (fl_not_clipped(x(), y_of_row - row, w(), 2 * row))
                fl_draw(each.data(), static_cast<int>(each.size()), left + indent_of(line, text_px),
                        y_of_row);
            y_of_row += row;
        }
        if (line.note.empty()) return;
        fl_font(FL_HELVETICA_BOLD, text_px);
        fl_color(look.note);
        fl_draw(line.note.data(), static_cast<int>(line.note.size()),
                x() + w() - text_px / 2 - text_width(line.note), base);
    }
};

board_view::board_view() : Fl_Scroll(0, 0, 10, 10), sheet_(new board_sheet) {
    end();
    type(Fl_Scroll::VERTICAL);
    box(FL_BORDER_BOX);
    color(window_style::white);
    scrollbar.linesize(30);
}

int board_view::height_of(const std::vector<board_line>& lines, int w, int text_px, int most) {
    const int edges = 2 * Fl::box_dx(FL_BORDER_BOX);
    return height_of_laid(laid_out(lines, w - edges, text_px, most), text_px) + edges;
}

void board_view::show_lines(const std::vector<board_line>& lines) {
    if (lines == sheet_->lines) return;
    sheet_->lines = lines;
    lay_out();
}

void board_view::stand(int x, int y, int w, int h, int text_px) {
    sheet_->text_px = text_px;
    resize(x, y, w, h);
}

void board_view::resize(int x, int y, int w, int h) {
    Fl_Widget::resize(x, y, w, h);
    lay_out();
}

// The bar takes room only where it is needed.
void board_view::lay_out() {
    const int edge = Fl::box_dx(box()), inside_h = h() - 2 * edge;
    int inside_w = w() - 2 * edge;
    const auto height = [&] {
        sheet_->laid = laid_out(sheet_->lines, inside_w, sheet_->text_px);
        return height_of_laid(sheet_->laid, sheet_->text_px);
    };
    int needed = height();
    if (needed > inside_h) {
        inside_w -= Fl::scrollbar_size();
        needed = height();
    }
    const int scrolled = std::clamp(yposition(), 0, std::max(0, needed - inside_h));
    sheet_->resize(x() + edge, y() + edge - yposition(), inside_w, std::max(needed, inside_h));
    if (scrolled != yposition()) scroll_to(0, scrolled);
    redraw();
}

void board_view::bring_into_view(int line) {
    if (line < 0 || line >= static_cast<int>(sheet_->laid.size())) return;
    const laid_line& at = sheet_->laid[static_cast<std::size_t>(line)];
    const int inside_h = h() - 2 * Fl::box_dx(box());
    if (at.top < yposition()) scroll_to(0, at.top);
    if (at.top + at.h > yposition() + inside_h) scroll_to(0, at.top + at.h - inside_h);
}

void board_view::draw() {
    const bool focused = Fl::focus() == this;
    // The toolkit would scroll the frame along with what it is around.
    if (focused) clear_damage(FL_DAMAGE_ALL);
    Fl_Scroll::draw();
    if (focused) draw_focus();
}

// It takes the keyboard where there is something to scroll: the toolkit's bar then has the arrows.
int board_view::handle(int event) {
    const bool scrolls = sheet_->h() > h();
    if (event == FL_FOCUS || event == FL_UNFOCUS) {
        redraw();
        return scrolls || event == FL_UNFOCUS ? 1 : 0;
    }
    if (event == FL_KEYBOARD && scrolls && Fl::focus() == this) return scrollbar.handle(event);
    return Fl_Scroll::handle(event);
}
