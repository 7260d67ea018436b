#include "station_view/replay_bar.h"

#include <FL/Fl.H>
#include <FL/Fl_Hor_Nice_Slider.H>

#include <cmath>
#include <utility>

#include "station_view/window_layout.h"
#include "station_view/window_style.h"
#include "station_view/window_words.h"

namespace {

constexpr double ms_per_s = 1000;

}  // namespace

replay_bar::replay_bar(live_session& session, language in, std::function<void()> changed)
    : session_(session), changed_(std::move(changed)) {
    const window_layout::area& at = window_layout::moment;
    moment_ = new Fl_Hor_Nice_Slider(at.x, at.y, at.w, at.h);
    moment_->box(FL_FLAT_BOX);
    moment_->color(window_style::paper);
    moment_->bounds(0, static_cast<double>(session.replay_length_ms().value_or(0)) / ms_per_s);
    moment_->step(0.01);
    moment_->tooltip(text_of(window_word::moment_tip, in));
    // Not while it is drawn along: each moment before the present one is a run from the start.
    moment_->when(FL_WHEN_RELEASE);
    moment_->callback([](Fl_Widget*, void* self) { static_cast<replay_bar*>(self)->take_moment(); },
                      this);
}

void replay_bar::take_moment() {
    session_.go_to(std::llround(moment_->value() * ms_per_s));
    changed_();
}

void replay_bar::show() {
    if (Fl::pushed() != moment_)
        moment_->value(static_cast<double>(session_.run().ms()) / ms_per_s);
}
