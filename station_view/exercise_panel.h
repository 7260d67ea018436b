// The exercise in the window: the task, the goals as they stand, the diagnosis, the verdict.
#pragma once
#include <FL/Fl_Group.H>

#include <functional>
#include <string>
#include <vector>

#include "lesson/examiner.h"
#include "station_view/diagnosis_window.h"
#include "station_view/exercise_board.h"
#include "station_view/journal_process.h"
#include "station_view/window_layout.h"

class board_view;
class exercise_head;
class panel_button;

class exercise_panel : public Fl_Group {
public:
    /// In the group being filled. `task` and `model` must live as long; `title` names the session
    /// in the verdict. `changed` is called after each answer to the diagnosis.
    exercise_panel(const window_layout::area& at, exercise_examiner& task,
                   const station_model& model, const std::string& title, language in,
                   std::function<void()> changed);

    /// Shows how the exercise stands, where that differs from what is shown.
    void show_standing();
    /// Opens the window for the answer, where the exercise asks for one and goes on.
    void open_diagnosis();
    /// It is over: shows so, and opens the verdict. Throws `refusal` when that cannot be.
    void conclude();
    /// Opens the verdict in the paged viewer, once it is over. Throws `refusal`.
    void open_verdict();
    /// Closes the viewer and the window for the answer.
    void close_documents();

    void resize(int x, int y, int w, int h) override;

private:
    [[nodiscard]] bool over() const { return task_.progress().over_ms.has_value(); }
    void lay_out();
    [[nodiscard]] bool fits(int text_px, bool side_by_side) const;
    void stand_side_by_side(const window_layout::area& at, int text_px);
    void stand_below_each_other(const window_layout::area& at, int text_px);
    void stand_button(const window_layout::area& at, int text_px);

    exercise_examiner& task_;
    const std::string title_;
    const language language_;
    const std::vector<board_line> task_lines_;
    exercise_board board_;
    exercise_head* head_;
    board_view *text_, *goals_;
    panel_button *diagnosis_, *verdict_;
    diagnosis_window window_;
    journal_process viewer_{paged_document::verdict};
};
