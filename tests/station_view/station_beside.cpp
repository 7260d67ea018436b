#include "tests/station_view/station_beside.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/station_view/scenes.h"

namespace {

constexpr double step_s = 0.01;
constexpr workcell_supplies one_base = {1, 1000};

bool within(const picture_box& box, int margin, int x, int y) {
    return picture_box{box.x + margin, box.y + margin, box.w - 2 * margin, box.h - 2 * margin}
        .contains(x, y);
}

std::optional<std::uint32_t> colour_at(const station_picture& picture, int x, int y) {
    for (auto each = picture.shapes.rbegin(); each != picture.shapes.rend(); ++each) {
        if (!within(each->box, -1, x, y)) continue;
        const bool plain = each->kind == shape_kind::fill || each->kind == shape_kind::bound;
        if (!plain || !within(each->box, 2, x, y)) return std::nullopt;
        return rgb_of(each->colour);
    }
    return rgb_of(picture.background);
}

}  // namespace

struct station_beside::stations {
    workcell_model model{0, one_base}, sound{0, one_base};
    faulty_station faulty{model};
    decltype(station_scene::commands) commands{};
};

station_beside::station_beside(const station_fault& fault)
    : stations_(std::make_unique<stations>()) {
    EXPECT_TRUE(stations_->faulty.set_fault(fault.name, fault.kind)) << fault.name;
}

station_beside::~station_beside() = default;

void station_beside::give(std::string_view command) {
    const int output = index_of(stations_->sound.outputs(), command);
    stations_->faulty.set_command(output, 1);
    stations_->sound.set_command(output, 1);
    stations_->commands.at(static_cast<std::size_t>(output)) = 1;
}

void station_beside::run(double seconds) {
    for (double left = seconds; left > step_s / 2; left -= step_s) {
        stations_->faulty.step(step_s);
        stations_->sound.step(step_s);
    }
}

bool station_beside::sound(std::string_view input) const {
    return stations_->sound.sensor(index_of(stations_->sound.inputs(), input)) == 1;
}

std::vector<drawn_point> station_beside::drawing(int w, int h) const {
    station_scene scene = scene_of(stations_->model);
    for (std::size_t i = 0; i < scene.sensors.size(); ++i)
        scene.sensors[i] = stations_->faulty.sensor(static_cast<int>(i));
    scene.commands = stations_->commands;
    scene.mode = session_mode::paused;
    const station_picture picture = draw_station(scene, w, h);
    std::vector<drawn_point> points;
    for (int y = 0; y < h; y += 4)
        for (int x = 0; x < w; x += 6)
            if (const auto rgb = colour_at(picture, x, y)) points.push_back({x, y, *rgb});
    return points;
}
