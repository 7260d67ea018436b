#include "station_view/station_picture.h"

#include <algorithm>

#include "station_view/station_parts.h"

namespace {

constexpr void (*pieces[])(picture_builder&, const station_scene&) = {
    draw_mode,      draw_ruler,    draw_belts,   draw_blockers, draw_bases, draw_loader,
    draw_dispenser, draw_magazine, draw_drawer,  draw_cup,      draw_press, draw_desk,
    draw_counts,    draw_legend,   draw_sensors, draw_commands};

// A point that is near something means it, when it is on nothing.
constexpr int near_px = 3;

// Displays count their pixels in 16 bits.
constexpr int most_px = 32767;

picture_box grown(const picture_box& box, int by) {
    return {box.x - by, box.y - by, box.w + 2 * by, box.h + 2 * by};
}

}  // namespace

bool station_scene::same_drawing(const station_scene& other) const {
    workcell_state at_once = state;
    at_once.time_s = other.state.time_s;
    return at_once == other.state && sensors == other.sensors && commands == other.commands &&
           desk == other.desk && mode == other.mode && english == other.english &&
           title == other.title;
}

station_picture draw_station(const station_scene& scene, int w, int h) {
    if (w < 1 || h < 1) return {};
    picture_builder into(std::min(w, most_px), std::min(h, most_px));
    for (const auto draw : pieces) draw(into, scene);
    return into.take();
}

const picture_thing* thing_at(const station_picture& picture, int x, int y) {
    for (const int by : {0, near_px})
        for (std::size_t i = picture.shapes.size(); i > 0; --i) {
            const picture_shape& shape = picture.shapes[i - 1];
            if (shape.thing >= 0 && grown(shape.box, by).contains(x, y))
                return &picture.things[static_cast<std::size_t>(shape.thing)];
        }
    return nullptr;
}
