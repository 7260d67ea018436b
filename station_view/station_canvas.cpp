#include "station_view/station_canvas.h"

#include <FL/Fl.H>
#include <FL/Fl_Tooltip.H>

#include <algorithm>
#include <utility>

#include "station_view/station_painter.h"

namespace {

constexpr int most_tip_px = 20;

}  // namespace

station_canvas::station_canvas(int x, int y, int w, int h) : Fl_Widget(x, y, w, h) {
    picture_ = draw_station(scene_, w, h);
}

station_canvas::~station_canvas() { Fl_Tooltip::enter_area(this, 0, 0, 0, 0, nullptr); }

bool station_canvas::show(const station_scene& scene) {
    if (scene.same_drawing(scene_)) return false;
    scene_ = scene;
    station_picture next = draw_station(scene_, w(), h());
    if (next == picture_) return true;
    picture_ = std::move(next);
    redraw();
    // What the pointer rests on may be another thing now, or say something else.
    if (is_below_pointer()) tell(pointed_at());
    return true;
}

void station_canvas::resize(int new_x, int new_y, int new_w, int new_h) {
    Fl_Widget::resize(new_x, new_y, new_w, new_h);
    if (picture_.w == new_w && picture_.h == new_h) return;
    picture_ = draw_station(scene_, new_w, new_h);
    redraw();
    if (is_below_pointer()) tell(pointed_at());
}

bool station_canvas::is_below_pointer() const { return Fl::belowmouse() == this; }

const picture_thing* station_canvas::pointed_at() const {
    if (!is_below_pointer()) return nullptr;
    return thing_at(picture_, pointer_x_ - x(), pointer_y_ - y());
}

int station_canvas::handle(int event) {
    if (event != FL_ENTER && event != FL_MOVE && event != FL_LEAVE) return Fl_Widget::handle(event);
    pointer_x_ = Fl::event_x();
    pointer_y_ = Fl::event_y();
    tell(event == FL_LEAVE ? nullptr : thing_at(picture_, pointer_x_ - x(), pointer_y_ - y()));
    return 1;
}

// As large as the names, as far as the toolkit's tooltips are wide enough for that. The toolkit
// keeps the text's address: it lets go of the old text before that changes. Another text comes up
// as one of its own.
void station_canvas::tell(const picture_thing* thing) {
    const std::string tip = thing ? thing->sentence : "";
    if (tip == tip_) return;
    Fl_Tooltip::enter_area(this, 0, 0, 0, 0, nullptr);
    tip_ = tip;
    Fl_Tooltip::size(std::clamp<int>(picture_.name_px, FL_NORMAL_SIZE, most_tip_px));
    if (thing) Fl_Tooltip::enter_area(this, x(), y(), w(), h(), tip_.c_str());
}

void station_canvas::draw() {
    ++paintings_;
    OFL_vision_sheet sheet;
    sheet.define(x(), y(), w(), h(), static_cast<int>(FL_BLACK));
    paint(picture_, sheet);
}
