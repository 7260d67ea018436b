// The picture as it is painted, read pixel by pixel. Each test's pictures are left in the build's
// folder "screenshots" for whoever wants to look at them.

// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include <FL/x.H>

#include <filesystem>

#include "tests/station_view/painted.h"
#include "tests/station_view/scenes.h"

namespace {

const std::string folder = "screenshots";

painted paint_and_save(const station_scene& scene, int w, int h, const std::string& name) {
    fl_open_display();
    std::filesystem::create_directories(folder);
    painted seen(draw_station(scene, w, h));
    seen.save(folder + "/" + name + "_" + std::to_string(w) + "x" + std::to_string(h) + ".ppm");
    return seen;
}

TEST(Painting, Screens) {
    paint_and_save(scene_at_work(), 1000, 300, "work");
    paint_and_save(scene_at_work(), 1920, 600, "work");
    paint_and_save(scene_at_work(), 1920, 1080, "work");
    paint_and_save(scene_at_work(), 3840, 2160, "work");
    paint_and_save(widest_scene(), 1000, 300, "widest");
    paint_and_save(widest_scene(), 1920, 700, "widest");
    paint_and_save(scene_of(workcell_model(29)), 1920, 600, "start");
    for (int mode = 0; mode < 6; ++mode) {
        station_scene scene = scene_at_work();
        scene.mode = static_cast<session_mode>(mode);
        paint_and_save(scene, 1400, 500, "mode" + std::to_string(mode));
    }
}

}  // namespace
