#include "station_view/exercise_panel.h"

#include <algorithm>
#include <utility>

#include "lesson/verdict.h"
#include "station_view/board_view.h"
#include "station_view/exercise_head.h"
#include "station_view/panel_button.h"

namespace {

using window_layout::area;

constexpr int edge = 6;

int button_height(int text_px) { return text_px * 2; }

/// From this width on the task stands beside the goals rather than above them.
constexpr int side_by_side_w = 640;
/// What the task takes of that width.
int task_width(int w) { return w * 42 / 100; }

struct sizes {
    int least, most;
};

/// Texts that are read from far away where there is room; the least one is still read by who sits
/// at the screen.
sizes text_sizes(int w, bool side_by_side) {
    if (!side_by_side) return {13, std::clamp(w / 25, 13, 24)};
    return {std::clamp(w / 110, 14, 48), std::clamp(w / 64, 14, 64)};
}

}  // namespace

exercise_panel::exercise_panel(const area& at, exercise_examiner& task, const station_model& model,
                               const std::string& title, language in, std::function<void()> changed)
    : Fl_Group(at.x, at.y, at.w, at.h),
      task_(task),
      title_(title),
      language_(in),
      task_lines_(task_of_board(task.task(), in)),
      head_(new exercise_head),
      text_(new board_view),
      goals_(new board_view),
      diagnosis_(new panel_button({}, window_action::diagnosis, in, [this] { open_diagnosis(); })),
      verdict_(new panel_button({}, window_action::verdict, in, [this] { open_verdict(); })),
      window_(model, in,
              [this, changed = std::move(changed)](const std::vector<station_fault>& answer) {
                  task_.take_answer(answer);
                  changed();
                  show_standing();
              }) {
    end();
    if (!task_.task().diagnosis) diagnosis_->hide();
    verdict_->hide();
    text_->show_lines(task_lines_);
    show_standing();
    lay_out();
}

void exercise_panel::show_standing() {
    exercise_board now = board_of(task_.task(), task_.progress(), task_.last_answer(), language_);
    if (now == board_) return;
    const bool another_goal = current_line(now) != current_line(board_);
    board_ = std::move(now);
    head_->show_board(board_);
    goals_->show_lines(board_.lines);
    if (another_goal) goals_->bring_into_view(current_line(board_));
}

void exercise_panel::open_diagnosis() {
    if (task_.task().diagnosis && !over()) window_.open(task_.last_answer());
}

void exercise_panel::conclude() {
    window_.close();
    diagnosis_->hide();
    verdict_->show();
    show_standing();
    lay_out();
    open_verdict();
}

void exercise_panel::open_verdict() {
    if (over())
        viewer_.show(verdict_lines(task_.task(), task_.progress(), language_, title_), language_);
}

void exercise_panel::close_documents() {
    window_.close();
    viewer_.close();
}

void exercise_panel::resize(int x, int y, int w, int h) {
    Fl_Widget::resize(x, y, w, h);
    lay_out();
}

bool exercise_panel::fits(int text_px, bool side_by_side) const {
    const int head_h = exercise_head::height_of(text_px, side_by_side);
    const bool has_button = diagnosis_->visible() || verdict_->visible();
    const int button_h = has_button ? button_height(text_px) + edge : 0;
    const int inside_w = w() - 2 * edge, inside_h = h() - 3 * edge - head_h;
    const int task_w = side_by_side ? task_width(inside_w) : inside_w;
    const int goals_w = side_by_side ? inside_w - task_w - edge : inside_w;
    const int task_h = board_view::height_of(task_lines_, task_w, text_px, inside_h) + button_h;
    if (task_h > inside_h) return false;
    const int goals_h = board_view::height_of(board_.lines, goals_w, text_px, inside_h);
    return (side_by_side ? goals_h : task_h + edge + goals_h) <= inside_h;
}

// As large as all of it can be read at once, but never smaller than the least size: it scrolls
// then.
void exercise_panel::lay_out() {
    const bool side_by_side = w() >= side_by_side_w;
    const auto [least, most] = text_sizes(w(), side_by_side);
    int text_px = most;
    while (text_px > least && !fits(text_px, side_by_side)) --text_px;
    head_->stand(x() + edge, y() + edge, w() - 2 * edge, text_px, side_by_side);
    const int top = edge + head_->h() + edge;
    const area below = {x() + edge, y() + top, w() - 2 * edge, h() - top - edge};
    side_by_side ? stand_side_by_side(below, text_px) : stand_below_each_other(below, text_px);
    goals_->bring_into_view(current_line(board_));
    redraw();
}

void exercise_panel::stand_side_by_side(const area& at, int text_px) {
    const int task_w = task_width(at.w), button_h = button_height(text_px);
    const bool has_button = diagnosis_->visible() || verdict_->visible();
    const int task_h = has_button ? at.h - button_h - edge : at.h;
    text_->stand(at.x, at.y, task_w, task_h, text_px);
    goals_->stand(at.x + task_w + edge, at.y, at.w - task_w - edge, at.h, text_px);
    stand_button({at.x, at.y + task_h + edge, task_w, button_h}, text_px);
}

// The goals come first; the task gets what they leave, and a few lines at least.
void exercise_panel::stand_below_each_other(const area& at, int text_px) {
    const bool has_button = diagnosis_->visible() || verdict_->visible();
    const int button_h = has_button ? button_height(text_px) + edge : 0;
    const int room = at.h - button_h - edge;
    const int goals_wanted = board_view::height_of(board_.lines, at.w, text_px, room);
    const int task_wanted = board_view::height_of(task_lines_, at.w, text_px, room);
    const int least_task = std::min(task_wanted, room * 2 / 5);
    const int task_h = std::max(least_task, std::min(task_wanted, room - goals_wanted));
    text_->stand(at.x, at.y, at.w, task_h, text_px);
    goals_->stand(at.x, at.y + task_h + edge, at.w, room - task_h, text_px);
    stand_button({at.x, at.y + at.h - button_h + edge, at.w, button_h - edge}, text_px);
}

void exercise_panel::stand_button(const area& at, int text_px) {
    for (Fl_Widget* const each :
         {static_cast<Fl_Widget*>(diagnosis_), static_cast<Fl_Widget*>(verdict_)}) {
        each->resize(at.x, at.y, at.w, std::max(at.h, 1));
        each->labelsize(text_px);
    }
}
