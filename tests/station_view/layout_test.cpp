// Where things are drawn: to scale, within the picture, and no text on anything else.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

#include "tests/station_view/looking.h"
#include "tests/station_view/scenes.h"

namespace {

/// The pixel of a place along the belts, by the main belt's ends at 0 and 1200 mm.
double pixel_of(const station_picture& picture, double mm) {
    const picture_box belt = around(shapes_of(picture, "main_belt"));
    return belt.x + mm * belt.w / 1200;
}

station_scene with_base(double front_mm) {
    station_scene scene;
    scene.state.bases = {{1, front_mm, false, false, false, 0}};
    return scene;
}

TEST(Layout, ABeltAndABaseAreToScale) {
    for (const auto& [w, h] : sizes) {
        const station_picture picture = draw_station(with_base(300), w, h);
        const picture_box waiting = around(shapes_of(picture, "waiting_belt"));
        EXPECT_NEAR(waiting.x, pixel_of(picture, -400), 2) << w;
        EXPECT_NEAR(waiting.x + waiting.w, pixel_of(picture, 0), 2) << w;
        const picture_box base = around(shapes_of(picture, "base"));
        EXPECT_NEAR(base.x, pixel_of(picture, 220), 2) << w;
        EXPECT_NEAR(base.x + base.w, pixel_of(picture, 300), 2) << w;
    }
}

TEST(Layout, EveryPlaceOfABaseIsToScale) {
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        const double front = std::uniform_real_distribution<double>(-320, 1280)(random);
        const auto& [w, h] = sizes[random() % std::size(sizes)];
        const station_picture picture = draw_station(with_base(front), w, h);
        const picture_box base = around(shapes_of(picture, "base"));
        EXPECT_NEAR(base.x, pixel_of(picture, front - 80), 2.5) << front << " on " << w;
        EXPECT_NEAR(base.x + base.w, pixel_of(picture, front), 2.5) << front << " on " << w;
    }
}

TEST(Layout, BlockersStandJustRightOfTheirStops) {
    for (const auto& [w, h] : sizes) {
        const station_picture picture = draw_station({}, w, h);
        const struct {
            const char* name;
            double stop_mm;
        } blockers[] = {{"blocker_1", 300}, {"blocker_2", 600}, {"blocker_3", 900}};
        for (const auto& [name, stop_mm] : blockers) {
            const picture_box rod = shapes_of(picture, name).front().box;
            EXPECT_GE(rod.x, std::floor(pixel_of(picture, stop_mm))) << name << ' ' << w;
            EXPECT_LT(rod.x, pixel_of(picture, stop_mm + 10)) << name << ' ' << w;
        }
    }
}

TEST(Layout, ABlockerIsInTheBasesPathFromHalfItsStrokeOn) {
    for (const auto& [out, in_path] :
         {std::pair{0.0, false}, {0.49, false}, {0.52, true}, {1.0, true}}) {
        station_scene scene = with_base(200);
        scene.state.blockers_out = {out, out, out};
        const station_picture picture = draw_station(scene, 1920, 700);
        const picture_box base = around(shapes_of(picture, "base"));
        EXPECT_EQ(shapes_of(picture, "blocker_2").front().box.y < base.y + base.h, in_path) << out;
    }
}

// A part of the mechanism goes from one place to another, in a straight line of its stroke.
TEST(Layout, StrokesAreToScale) {
    const struct rod {
        const char* name;
        double workcell_state::*stroke;
        bool down;
        // The press's head, or the part that is carried.
        ink end;
    } rods[] = {{"drawer", &workcell_state::drawer_out, false, ink::part},
                {"suction_cup", &workcell_state::cup_down, true, ink::part},
                {"press", &workcell_state::press_down, true, ink::dark_metal}};
    const auto place = [](const rod& moved, double fraction) {
        station_scene scene;
        scene.state.*moved.stroke = fraction;
        scene.state.part_in_drawer = scene.state.part_in_cup = true;
        int found = -1;
        for (const picture_shape& each : shapes_of(draw_station(scene, 3840, 2000), moved.name))
            if (each.kind == shape_kind::bound && each.colour == moved.end)
                found = moved.down ? each.box.y : each.box.x;
        return found;
    };
    for (const rod& each : rods) {
        const int from = place(each, 0), to = place(each, 1);
        EXPECT_GT(to - from, 100) << each.name;
        for (const double fraction : {0.1, 0.25, 0.5, 0.98})
            EXPECT_NEAR(place(each, fraction), from + fraction * (to - from), 1.5)
                << each.name << fraction;
    }
}

TEST(Layout, APartIsTakenWhereItIs) {
    station_scene in_drawer, in_cup;
    in_drawer.state.part_in_drawer = in_cup.state.part_in_cup = true;
    in_drawer.state.drawer_out = in_cup.state.drawer_out = 1;
    in_drawer.state.cup_down = in_cup.state.cup_down = 1;
    const auto part_in = [](const station_scene& scene, const char* name) {
        for (const picture_shape& each : shapes_of(draw_station(scene, 1920, 700), name))
            if (each.colour == ink::part) return each.box;
        return picture_box{};
    };
    EXPECT_EQ(part_in(in_drawer, "drawer"), part_in(in_cup, "suction_cup"));
    EXPECT_GT(part_in(in_cup, "suction_cup").w, 0);
}

TEST(Layout, BeltsShowTheWayThatTheyHaveRun) {
    const auto cleats = [](std::int64_t um) {
        station_scene scene;
        scene.state.main_belt_um = um;
        std::vector<picture_box> found;
        for (const picture_shape& each : shapes_of(draw_station(scene, 1920, 700), "main_belt"))
            found.push_back(each.box);
        return found;
    };
    const auto standing = cleats(0);
    EXPECT_NE(cleats(5'000), standing);
    EXPECT_NE(cleats(20'000), standing);
    EXPECT_EQ(cleats(0), standing);
    EXPECT_EQ(cleats(100 * 40'000), standing);
}

TEST(Layout, NothingLiesOutsideWhateverTheState) {
    random_scenes random(11);
    std::mt19937 pick(12);
    for (int i = 0; i < 3000; ++i) {
        const bool made_for = pick() % 2 == 0;
        const auto& size = sizes[pick() % std::size(sizes)];
        const int w = made_for ? size.w : static_cast<int>(pick() % 5000);
        const int h = made_for ? size.h : static_cast<int>(pick() % 3000);
        const station_picture picture = draw_station(random.next(), w, h);
        for (const picture_shape& each : picture.shapes) {
            ASSERT_TRUE(each.box.x >= 0 && each.box.y >= 0 && each.box.w > 0 && each.box.h > 0 &&
                        each.box.x + each.box.w <= w && each.box.y + each.box.h <= h)
                << name_of(picture, each) << ' ' << each.text << " on " << w << " x " << h;
            ASSERT_LT(each.thing, static_cast<int>(picture.things.size()));
        }
    }
}

TEST(Layout, AnySizeWillDo) {
    for (const int w : {-5, 0, 1, 2, 7, 60, 999, 32767, 2'000'000'000})
        for (const int h : {-5, 0, 1, 2, 7, 60, 299, 32767, 2'000'000'000}) {
            const station_picture picture = draw_station(scene_at_work(), w, h);
            EXPECT_EQ(picture.shapes.empty(), w < 1 || h < 1 || picture.w < 1) << w << ' ' << h;
            EXPECT_LE(picture.w, std::max(w, 0));
            EXPECT_LE(picture.h, std::max(h, 0));
        }
}

/// What a text may lie on: the panels that hold texts, and the marks of a mode behind everything.
bool is_background(const std::string& name) {
    static const std::set<std::string> names = {"desk",          "counts",        "paused",
                                                "link_dead",     "replay",        "over",
                                                "replay_paused", "emergency_stop"};
    return names.contains(name);
}

void expect_no_text_on_another_thing(const station_picture& picture, const std::string& when) {
    for (const picture_shape& text : picture.shapes) {
        if (text.kind != shape_kind::text) continue;
        for (const picture_shape& other : picture.shapes) {
            if (&other == &text ||
                (other.kind != shape_kind::text &&
                 (other.thing == text.thing || is_background(name_of(picture, other)))))
                continue;
            EXPECT_FALSE(meet(text.box, other.box))
                << text.text << " lies on " << name_of(picture, other) << ' ' << other.text << when
                << " on " << picture.w << " x " << picture.h;
        }
    }
}

// The mechanism at every end of its strokes, with the longest texts.
TEST(Layout, NoTextLiesOnAnythingElse) {
    for (const auto& [w, h] : sizes)
        for (const bool english : {false, true})
            for (int mode = 0; mode < static_cast<int>(session_mode::count); ++mode)
                for (const double stroke : {0.0, 1.0}) {
                    station_scene scene = widest_scene();
                    scene.english = english;
                    scene.mode = static_cast<session_mode>(mode);
                    scene.state.drawer_out = scene.state.cup_down = stroke;
                    scene.state.press_down = stroke;
                    scene.state.blockers_out = {stroke, stroke, stroke};
                    scene.state.part_in_drawer = scene.state.part_in_cup = true;
                    expect_no_text_on_another_thing(draw_station(scene, w, h),
                                                    english ? " in English" : "");
                }
}

TEST(Layout, ABasePassesBelowEveryText) {
    for (double front = -320; front <= 1280; front += 10) {
        station_scene scene = widest_scene();
        scene.state.bases = {{1, front, true, true, false, 1}};
        expect_no_text_on_another_thing(draw_station(scene, 1000, 300), "");
    }
}

// To be read from three metres on a projector.
TEST(Layout, NamesAreFourteenPixelsAtLeastOnAProjector) {
    for (const int h : {430, 600, 700, 1080}) {
        const station_picture picture = draw_station(widest_scene(), 1920, h);
        for (const picture_shape& each : picture.shapes) {
            if (each.kind != shape_kind::text) continue;
            const bool is_name = each.text == name_of(picture, each);
            EXPECT_GE(each.text_px, is_name ? 14 : 11) << each.text << " at a height of " << h;
        }
    }
}

TEST(Layout, SaysHowHighItsNamesAre) {
    for (const auto& [w, h] : sizes) {
        const station_picture picture = draw_station({}, w, h);
        EXPECT_EQ(picture.name_px, shapes_of(picture, "te").back().text_px) << w;
    }
}

TEST(Layout, TextsGrowWithThePicture) {
    const auto name_px = [](int w, int h) {
        return shapes_of(draw_station({}, w, h), "timer10_term").back().text_px;
    };
    EXPECT_EQ(name_px(1000, 300), 10);
    EXPECT_EQ(name_px(2000, 600), 20);
    EXPECT_EQ(name_px(3840, 2160), 38);
}

}  // namespace
