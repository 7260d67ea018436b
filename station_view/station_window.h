// The station's window: the drawing, the desk, time, counts, incidents, faults and the journal.
#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "session/live_session.h"
#include "station_view/desk_panel.h"
#include "station_view/journal.h"
#include "station_view/journal_process.h"
#include "station_view/lamp_panels.h"
#include "station_view/manual_panels.h"
#include "station_view/replay_bar.h"
#include "station_view/scene_keeper.h"
#include "station_view/session_news.h"
#include "station_view/time_panel.h"
#include "station_view/window_layout.h"

class Fl_Box;
class Fl_Button;
class Fl_Group;
class Fl_Widget;
class count_panel;
class exercise_examiner;
class exercise_panel;
class fault_list;
class incident_list;
class keyed_window;
class station_canvas;
class window_body;

/// What a window can be asked for.
struct window_options {
    /// Of everything that it shows, but for what the events tell.
    language in = language::french;
    /// Names the window; empty: what it shows does.
    std::string title;
    /// The session's task, if it has one: shown in the place of the faults. Must live as long.
    exercise_examiner* task = nullptr;
};

class station_window {
public:
    /// Builds the window of a session that has not begun, and follows it. `model` is what the
    /// session steps: the ZK4 station is drawn, the inputs of a manual one are set, of another one
    /// inputs and outputs are shown. Both must live as long. Needs the display.
    station_window(live_session& session, station_model& model, const window_options& options);
    ~station_window();
    station_window(const station_window&) = delete;
    station_window& operator=(const station_window&) = delete;

    /// `changed` is called whenever something was asked of the session, which is to be served then.
    void on_change(std::function<void()> changed) { serve_ = std::move(changed); }

    /// Draws the present scene, then opens the window.
    void show();
    /// Closes it with its documents; nothing is drawn any more.
    void hide();
    /// Closes the documents that it has opened.
    void close_documents();

    /// The session is over with its task: shows the verdict, and stands still.
    void conclude();
    /// Whether its user has closed it.
    bool closed() const { return closed_; }

    /// After the session was served: what is shown may have changed. It is drawn within 40 ms, and
    /// no more often than every 28; within 112 ms what begins by itself, as a base that is laid
    /// down.
    void served();
    /// After the toolkit has worked.
    void worked();

    /// Does what a button or a key does.
    void act(window_action action);

private:
    void add_drawing(const workcell_model& model);
    void add_panels(manual_station& station);
    void add_lamps(const station_model& model);
    void make_room(int panels_width);
    void add_middle_column(bool with_desk);
    Fl_Button* add_drawing_alone();
    Fl_Button* add_column_button(const window_layout::area& at);
    void end_body();
    void add_faults();
    void add_exercise();
    void name_window(const station_model& model);
    void place();
    bool take_key(int symbol, bool shift, key_press what);
    void changed();
    static void draw_when_due(void* self);
    void draw_now();
    void show_trouble();
    void tell(const std::string& trouble);
    void restore_title();
    void show_faults();
    void go_to_faults();
    void open_journal();
    void report(const std::function<void()>& open);

    live_session& session_;
    window_options options_;
    std::function<void()> serve_;
    session_news news_;
    journal journal_;
    journal_process journal_process_;
    std::unique_ptr<keyed_window> window_;
    std::optional<scene_keeper> scene_;
    std::optional<manual_panels> panels_;
    std::optional<lamp_panels> lamps_;
    std::optional<desk_panel> desk_;
    std::optional<time_panel> time_;
    std::optional<replay_bar> moment_;
    std::unique_ptr<count_panel> counts_;
    // Where the station is drawn.
    window_body* body_ = nullptr;
    // Of the column that desk and faults share in a small window.
    Fl_Widget *journal_button_ = nullptr, *to_faults_ = nullptr, *to_desk_ = nullptr;
    station_canvas* canvas_ = nullptr;
    incident_list* incidents_ = nullptr;
    fault_list* faults_ = nullptr;
    Fl_Box* faults_heading_ = nullptr;
    exercise_panel* exercise_ = nullptr;
    Fl_Group* column_ = nullptr;
    // What the window is called, and how many of the session's troubles it has told.
    std::string title_;
    std::size_t told_troubles_ = 0;
    // How far left the columns stand, for what is narrower than the drawing.
    int columns_left_by_ = 0;
    // Whether something did when it was last drawn, or was asked to since.
    bool moves_ = false;
    bool drawing_is_due_ = false;
    double drawn_at_s_ = 0;
    bool closed_ = false;
};
