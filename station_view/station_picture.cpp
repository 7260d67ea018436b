#include "station_view/station_picture.h"

bool station_scene::same_drawing(const station_scene& other) const {
    workcell_state at_once = state;
    at_once.time_s = other.state.time_s;
    return at_once == other.state && sensors == other.sensors && commands == other.commands &&
           desk == other.desk && mode == other.mode && english == other.english &&
           title == other.title;
}

std::uint32_t rgb_of(ink) { return 0xFFFFFF; }

station_picture draw_station(const station_scene&, int w, int h) {
    station_picture picture;
    picture.w = w;
    picture.h = h;
    return picture;
}

const picture_thing* thing_at(const station_picture& picture, int x, int y) {
    for (std::size_t i = picture.shapes.size(); i > 0; --i)
        if (picture.shapes[i - 1].thing >= 0 && picture.shapes[i - 1].box.contains(x, y))
            return &picture.things[static_cast<std::size_t>(picture.shapes[i - 1].thing)];
    return nullptr;
}
