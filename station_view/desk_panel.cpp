#include "station_view/desk_panel.h"

#include <FL/Fl_Button.H>

#include <initializer_list>
#include <utility>

#include "station_view/held_button.h"
#include "station_view/mushroom_button.h"
#include "station_view/window_style.h"

namespace {

void show_value(Fl_Button& button, bool value) {
    if ((button.value() != 0) != value) button.value(value);
}

}  // namespace

desk_panel::desk_panel(station_run& run, language in, std::function<void()> changed)
    : run_(run),
      changed_(std::move(changed)),
      pushes_{push{&station_desk::dc}, push{&station_desk::ac}} {
    namespace layout = window_layout;
    const auto held = [this, in](const layout::area& at, bool station_desk::*button,
                                 window_action action) {
        auto* const made = new held_button(at.x, at.y, at.w, at.h,
                                           [this, button](bool now) { hold(button, now); });
        window_style::dress(*made, action, in);
        return made;
    };
    start_ = held(layout::start_cycle, &station_desk::dc, window_action::start_cycle);
    stop_ = held(layout::stop_cycle, &station_desk::ac, window_action::stop_cycle);
    const auto& at = layout::emergency;
    emergency_ = new mushroom_button(at.x, at.y, at.w, at.h);
    window_style::dress(*emergency_, window_action::emergency, in);
    emergency_->callback(
        [](Fl_Widget*, void* self) { static_cast<desk_panel*>(self)->set_emergency(true); }, this);
    const auto& under = layout::unlock;
    unlock_ = new Fl_Button(under.x, under.y, under.w, under.h);
    window_style::dress(*unlock_, window_action::unlock, in);
    unlock_->callback(
        [](Fl_Widget*, void* self) { static_cast<desk_panel*>(self)->set_emergency(false); }, this);
}

void desk_panel::only_show() {
    only_shows_ = true;
    for (Fl_Button* const each :
         std::initializer_list<Fl_Button*>{start_, stop_, emergency_, unlock_})
        each->deactivate();
}

void desk_panel::set(bool station_desk::*button, bool pushed) {
    station_desk desk = run_.desk();
    if (only_shows_ || desk.*button == pushed) return;
    desk.*button = pushed;
    run_.set_desk(desk);
    changed_();
}

void desk_panel::hold(bool station_desk::*button, bool held) {
    for (push& each : pushes_) {
        if (each.button != button || each.held == held) continue;
        each.held = held;
        if (held) each.ms = run_.ms();
        each.waits_for_step = !held && run_.ms() == each.ms;
        if (!each.waits_for_step) set(button, held);
    }
}

void desk_panel::let_go() {
    for (const push& each : pushes_)
        if (each.held) hold(each.button, false);
}

void desk_panel::set_emergency(bool down) { set(&station_desk::atu, down); }

void desk_panel::served() {
    for (push& each : pushes_) {
        if (!each.waits_for_step || run_.ms() == each.ms) continue;
        each.waits_for_step = false;
        set(each.button, false);
    }
}

void desk_panel::show() {
    const station_desk& desk = run_.desk();
    show_value(*start_, desk.dc);
    show_value(*stop_, desk.ac);
    show_value(*emergency_, desk.atu);
    if (only_shows_) return;
    if (desk.atu && !unlock_->active()) unlock_->activate();
    if (!desk.atu && unlock_->active()) unlock_->deactivate();
}
