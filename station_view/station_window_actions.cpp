// What the window's buttons and keys do.
#include <FL/Fl_Window.H>

#include "session/failure.h"
#include "station_view/exercise_panel.h"
#include "station_view/fault_list.h"
#include "station_view/keyed_window.h"
#include "station_view/station_window.h"
#include "station_view/window_body.h"

namespace {

bool works_after_end(window_action action) {
    return action == window_action::journal || action == window_action::verdict ||
           action == window_action::drawing_alone;
}

}  // namespace

bool station_window::take_key(int symbol, bool shift, key_press what) {
    const bool down = what != key_press::up;
    const std::optional<window_action> action = action_of_key(symbol, shift && down);
    if (!action) return false;
    const bool starts = action == window_action::start_cycle;
    if (starts || action == window_action::stop_cycle) {
        if (desk_) desk_->hold(starts ? &station_desk::dc : &station_desk::ac, down);
        return true;
    }
    if (down && (what == key_press::down || row_of_action(*action).repeats)) act(*action);
    return true;
}

void station_window::act(window_action action) {
    if (session_.over() && !works_after_end(action)) return;
    restore_title();
    switch (action) {
        case window_action::emergency:
        case window_action::unlock:
            if (desk_) desk_->set_emergency(action == window_action::emergency);
            break;
        case window_action::pause:
            time_->pause_or_resume();
            break;
        case window_action::step:
            time_->step();
            break;
        case window_action::next_change:
            time_->run_to_next_change();
            break;
        case window_action::slower:
        case window_action::faster:
            time_->change_speed(action == window_action::faster);
            break;
        case window_action::faults:
            go_to_faults();
            break;
        case window_action::diagnosis:
            if (exercise_) exercise_->open_diagnosis();
            break;
        case window_action::verdict:
            if (exercise_) report([this] { exercise_->open_verdict(); });
            break;
        case window_action::journal:
            open_journal();
            break;
        case window_action::drawing_alone:
            if (body_) body_->change_drawing_alone();
            break;
        default:
            break;
    }
}

// Where desk and faults have one place, and that has the faults, the desk comes back.
void station_window::go_to_faults() {
    if (!faults_) return;
    if (body_ && body_->faults_for_desk()) return body_->show_desk();
    if (body_) body_->show_faults();
    faults_->go_to();
}

void station_window::open_journal() {
    report([this] {
        journal_process_.show(journal_.lines(options_.title, options_.in), options_.in);
    });
}

// What cannot be opened is told where it is seen, until something else is asked for.
void station_window::report(const std::function<void()>& open) {
    restore_title();
    try {
        open();
    } catch (const failure& why) {
        tell(why.why);
    }
}
