// The picture as it is painted, read pixel by pixel. The pictures are left in the folder
// "screenshots" of the build, for whoever wants to look at them.

// Before the toolkit's headers, which bring the X server's macros.
#include <gtest/gtest.h>

#include <FL/fl_draw.H>
#include <FL/x.H>

#include <filesystem>

#include "tests/station_view/looking.h"
#include "tests/station_view/painted.h"
#include "tests/station_view/scenes.h"
#include "tests/workcell/station_driver.h"

namespace {

/// Paints a scene; with a name, leaves the picture behind.
painted paint_scene(const station_scene& scene, int w, int h, const std::string& name = "") {
    const std::string folder = "screenshots";
    fl_open_display();
    painted seen(draw_station(scene, w, h));
    if (name.empty()) return seen;
    std::filesystem::create_directories(folder);
    seen.save(folder + "/" + name + "_" + std::to_string(w) + "x" + std::to_string(h) + ".ppm");
    return seen;
}

constexpr struct { int w, h; } screens[] = {{1000, 300}, {1920, 700}, {1920, 1080}, {3840, 2160}};

TEST(Painting, LampsReadInTheirColours) {
    for (const auto& [w, h] : screens) {
        const station_scene scene = scene_at_work();
        const painted seen = paint_scene(scene, w, h, "work");
        const station_picture picture = draw_station(scene, w, h);
        for (std::size_t i = 0; i < station_inputs.size(); ++i) {
            const picture_box lamp = shapes_of(picture, station_inputs[i]).front().box;
            EXPECT_EQ(seen.at(lamp.x + lamp.w / 2, lamp.y + lamp.h / 2),
                      scene.sensors[i] == 1 ? 0xFF0000U : 0x0000FFU)
                << station_inputs[i] << " on " << w << " x " << h;
        }
    }
}

double mean_grey(const painted& seen, const picture_box& box) {
    double sum = 0;
    for (int y = box.y; y < box.y + box.h; ++y)
        for (int x = box.x; x < box.x + box.w; ++x) sum += grey_of(seen.at(x, y));
    return sum / (box.w * box.h);
}

TEST(Painting, LampsAreApartInGreyTones) {
    for (const auto& [w, h] : screens) {
        station_scene ones, zeros, others;
        ones.sensors.fill(1);
        others.sensors.fill(7);
        const painted one = paint_scene(ones, w, h), zero = paint_scene(zeros, w, h),
                      other = paint_scene(others, w, h);
        const station_picture picture = draw_station(zeros, w, h);
        for (const std::string_view name : station_inputs) {
            const picture_box lamp = shapes_of(picture, name).front().box;
            EXPECT_GT(mean_grey(one, lamp) - mean_grey(zero, lamp), 30) << name << ' ' << w;
            EXPECT_GT(mean_grey(other, lamp) - mean_grey(one, lamp), 30) << name << ' ' << w;
        }
    }
}

TEST(Painting, CommandsThatAreOneHaveTheirArrowFilledDark) {
    for (const auto& [w, h] : screens) {
        station_scene ones;
        ones.commands.fill(1);
        const painted lit = paint_scene(ones, w, h), unlit = paint_scene({}, w, h);
        const station_picture picture = draw_station(ones, w, h);
        for (const std::string_view name : station_outputs) {
            const picture_box arrow = shapes_of(picture, name).front().box;
            const int x = arrow.x + arrow.w / 2, y = arrow.y + arrow.h / 2;
            EXPECT_EQ(lit.at(x, y), rgb_of(ink::lit)) << name << " on " << w;
            EXPECT_EQ(unlit.at(x, y), rgb_of(ink::unlit)) << name << " on " << w;
        }
    }
}

// A picture estimates its texts' widths; the typeface must not be wider.
TEST(Painting, TextsFitInTheirBoxes) {
    fl_open_display();
    for (const auto& [w, h] : screens)
        for (const bool english : {false, true}) {
            station_scene scene = widest_scene();
            scene.english = english;
            scene.title = "Poste 7 : mise en service, WEITER MIT @ & 100 %";
            for (const picture_shape& each : draw_station(scene, w, h).shapes) {
                if (each.kind != shape_kind::text) continue;
                fl_font(each.bold ? FL_HELVETICA_BOLD : FL_HELVETICA, each.text_px);
                EXPECT_LE(fl_width(each.text.c_str()), each.box.w + 1) << each.text << ' ' << w;
            }
        }
}

TEST(Painting, ModesAreApartAtAGlance) {
    constexpr int w = 1400, h = 500;
    std::vector<std::pair<std::string, painted>> seen;
    for (int mode = 0; mode < static_cast<int>(session_mode::count); ++mode)
        for (const bool stopped : {false, true}) {
            station_scene scene = scene_at_work();
            scene.mode = static_cast<session_mode>(mode);
            scene.state.emergency_stop = stopped;
            const std::string name = "mode_" + std::to_string(mode) + (stopped ? "_emergency" : "");
            seen.emplace_back(name, paint_scene(scene, w, h, name));
        }
    for (std::size_t i = 1; i < seen.size(); ++i) {
        int differing = 0;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                differing += std::abs(grey_of(seen[i].second.at(x, y)) -
                                      grey_of(seen[0].second.at(x, y))) > 15;
        EXPECT_GT(differing, w * h / 40) << seen[i].first;
    }
}

TEST(Painting, PaintsNothingOutsideWhateverTheScene) {
    constexpr int edge = 20;
    fl_open_display();
    random_scenes random(21);
    std::mt19937 pick(22);
    for (int i = 0; i < 200; ++i) {
        const int w = 1 + static_cast<int>(pick() % 1300), h = 1 + static_cast<int>(pick() % 500);
        const painted seen(draw_station(random.next(), w, h), edge);
        int changed = 0;
        for (int y = -edge; y < h + edge; ++y)
            for (int x = -edge; x < w + edge; ++x) {
                const bool inside = x >= 0 && x < w && y >= 0 && y < h;
                changed += !inside && seen.at(x, y) != painted::edge_rgb;
            }
        ASSERT_EQ(changed, 0) << i << ": " << w << " x " << h;
        ASSERT_NE(seen.at(w / 2, h / 2), painted::edge_rgb) << i;
    }
}

TEST(Painting, AnAtSignInATitleIsNoSymbol) {
    station_scene plain, symbol;
    plain.title = "@";
    symbol.title = "->";
    const auto title = [](const station_scene& scene) {
        const picture_box box = around(shapes_of(draw_station(scene, 1920, 700), "title"));
        const painted seen = paint_scene(scene, 1920, 700);
        int dark = 0;
        for (int y = box.y; y < box.y + box.h; ++y)
            for (int x = box.x; x < box.x + box.w; ++x) dark += grey_of(seen.at(x, y)) < 100;
        return dark;
    };
    EXPECT_GT(title(plain), 20);
    plain.title = "@->";
    EXPECT_GT(title(plain), title(symbol) + 20);
}

/// The model itself, a base in its press and others on their way.
station_scene scene_of_the_model() {
    using enum station_output;
    station_driver station(29);
    station.bring_to_zone(3, true, true);
    station.set("BZ1=1 BZ2=1 MTA=1 MT=1 DESP=1");
    station.run_ms(7000);
    station.set("SORT=1");
    station.run_ms(500);
    station_scene scene = scene_of(station.model, {BZ1, BZ2, BZ3, MTA, MT, DESP, SORT});
    scene.title = "poste 7";
    return scene;
}

TEST(Painting, TheModelsOwnStateIsInThePicture) {
    const station_scene scene = scene_of_the_model();
    const station_picture picture = draw_station(scene, 1600, 520);
    const painted seen = paint_scene(scene, 1600, 520, "model");
    EXPECT_EQ(texts_of(shapes_of(picture, "press_timer")), std::vector<std::string>{"6 s"});
    const picture_box lamp = shapes_of(picture, "p3ok").front().box;
    EXPECT_EQ(seen.at(lamp.x + lamp.w / 2, lamp.y + lamp.h / 2), 0xFF0000U);
}

// For the eye alone: what the other tests do not paint.
TEST(Painting, LeavesPicturesToLookAt) {
    station_scene other = scene_at_work();
    other.state.bases = {{1, 1240, true, true, true, 1},
                         {2, 1000, true, true, true, 1},
                         {3, 600, true, false, false, 1}};
    other.state.drawer_out = other.state.cup_down = 1;
    other.state.part_in_drawer = true;
    other.state.part_in_cup = other.state.vacuum = false;
    other.state.bases_in_stock = other.state.parts_in_magazine = 0;
    other.state.press_held_s = 0;
    other.state.press_down = 0.5;
    other.desk = {true, true, true};
    EXPECT_EQ(paint_scene(other, 1920, 600, "other").w, 1920);
    EXPECT_EQ(paint_scene(widest_scene(), 1000, 300, "widest").w, 1000);
    EXPECT_EQ(paint_scene(scene_of(workcell_model(29)), 1920, 600, "start").w, 1920);
}

}  // namespace
