#include "station_view/time_panel.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Hor_Nice_Slider.H>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "session/session_report.h"
#include "session/whole_number.h"
#include "station_view/panel_button.h"
#include "station_view/window_words.h"

namespace {

namespace layout = window_layout;

constexpr double speeds[] = {0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100};

constexpr bilingual resume_label = {"Reprendre", "Go on"};

/// While it runs the clock shows tenths: nobody reads more.
std::string clock_text(std::int64_t ms, bool paused) {
    std::string text = seconds_text(ms);
    if (!paused) text.resize(text.size() - 2);
    return text + " s";
}

}  // namespace

double next_speed(double speed, bool faster) {
    constexpr double hair = 1e-9;
    if (faster) {
        for (const double each : speeds)
            if (each > speed * (1 + hair)) return each;
        return std::end(speeds)[-1];
    }
    double found = speeds[0];
    for (const double each : speeds)
        if (each < speed * (1 - hair)) found = each;
    return found;
}

time_panel::time_panel(live_session& session, session_news& news, language in,
                       std::function<void()> changed)
    : session_(session), news_(news), language_(in), changed_(std::move(changed)) {
    window_style::add_heading(layout::time_title, text_of(window_word::time, in));
    clock_ = window_style::add_text(layout::clock, "");
    clock_->align(FL_ALIGN_RIGHT | FL_ALIGN_INSIDE);
    const auto button = [this, in](const layout::area& at, window_action action,
                                   std::function<void()> pressed) {
        auto* const made = new panel_button(at, action, in, std::move(pressed));
        worked_.push_back(made);
        return made;
    };
    pause_ = button(layout::pause, window_action::pause, [this] { pause_or_resume(); });
    button(layout::step, window_action::step, [this] { step(); });
    button(layout::next_change, window_action::next_change, [this] { run_to_next_change(); });
    button(layout::slower, window_action::slower, [this] { change_speed(false); });
    const layout::area& at = layout::speed;
    speed_ = new Fl_Hor_Nice_Slider(at.x, at.y, at.w, at.h);
    worked_.push_back(speed_);
    speed_->box(FL_FLAT_BOX);
    speed_->color(window_style::paper);
    speed_->bounds(std::log10(least_speed), std::log10(most_speed));
    speed_->step(0.05);
    speed_->tooltip(text_of(window_word::speed_tip, in));
    speed_->callback([](Fl_Widget*, void* self) { static_cast<time_panel*>(self)->take_slider(); },
                     this);
    button(layout::faster, window_action::faster, [this] { change_speed(true); });
    speed_text_ = window_style::add_text(layout::speed_text, "");
    speed_text_->tooltip(speed_->tooltip());
    state_ = window_style::add_text(layout::state, "");
    state_->labelfont(FL_HELVETICA_BOLD);
    state_->align(FL_ALIGN_CENTER | FL_ALIGN_INSIDE | FL_ALIGN_CLIP);
}

void time_panel::only_show() {
    for (Fl_Widget* const each : worked_) each->deactivate();
}

void time_panel::pause_or_resume() {
    news_.forget_run();
    if (session_.time().paused())
        session_.time().resume(std::chrono::steady_clock::now());
    else
        session_.time().pause();
    changed_();
}

void time_panel::step() {
    news_.forget_run();
    session_.time().pause();
    session_.time().run(1);
    changed_();
}

void time_panel::run_to_next_change() {
    news_.run_to_next_change();
    changed_();
}

void time_panel::set_speed(double speed) {
    session_.time().set_speed(speed, std::chrono::steady_clock::now());
    changed_();
}

void time_panel::change_speed(bool faster) {
    set_speed(next_speed(session_.time().speed(), faster));
}

// Two digits, so that the speed can be told and typed again.
void time_panel::take_slider() {
    const double place = std::floor(speed_->value() + 1e-9);
    const double digits = std::round(std::pow(10, speed_->value() - place + 1));
    const double speed =
        place > 0 ? digits * std::pow(10, place - 1) : digits / std::pow(10, 1 - place);
    set_speed(std::clamp(speed, least_speed, most_speed));
}

void time_panel::show() {
    const step_clock& time = session_.time();
    window_style::relabel(*clock_, clock_text(session_.run().ms(), time.paused()));
    window_style::relabel(
        *pause_,
        (time.paused() ? resume_label : row_of_action(window_action::pause).label).in(language_));
    // A hair of the slider's own rounding is no change.
    const double place = std::log10(time.speed());
    if (std::abs(speed_->value() - place) > 0.03) speed_->value(place);
    window_style::relabel(*speed_text_, "\u00d7 " + number_text(time.speed()));
    show_state();
}

void time_panel::show_state() {
    struct look {
        window_word word;
        Fl_Color back, front;
    };
    const bool paused = session_.time().paused();
    look now = {window_word::running, 0xDCEBE100, window_style::green};
    if (session_.replaying()) now = {window_word::replay, 0xD6E2F300, window_style::blue};
    if (paused) now = {window_word::paused, 0xFBEBC200, window_style::ink};
    if (paused && news_.nothing_changed()) now.word = window_word::nothing_changed;
    if (session_.run().desk().atu) now = {window_word::emergency, window_style::red, FL_WHITE};
    if (!session_.commanded() && !session_.replaying())
        now = {window_word::dead_link, 0x4A4F5500, FL_WHITE};
    if (session_.over()) now = {window_word::exercise_over, 0xC9CED400, window_style::ink};
    if (state_->color() != now.back) {
        state_->color(now.back);
        state_->labelcolor(now.front);
        state_->redraw();
    }
    std::string words = text_of(now.word, language_);
    if (paused && (now.word == window_word::emergency || now.word == window_word::dead_link))
        words += std::string(" - ") + text_of(window_word::paused, language_);
    window_style::relabel(*state_, words);
}
