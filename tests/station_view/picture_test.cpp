// What is drawn.
#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "tests/station_view/looking.h"
#include "tests/station_view/scenes.h"

namespace {

constexpr int wide = 1920, high = 700;

station_picture draw(const station_scene& scene) { return draw_station(scene, wide, high); }

TEST(Picture, ShowsEverySensorOnceWithItsName) {
    for (const auto& [w, h] : sizes) {
        const station_picture picture = draw_station(scene_at_work(), w, h);
        for (const std::string_view name : station_inputs) {
            const auto shapes = shapes_of(picture, name);
            EXPECT_EQ(texts_of(shapes), std::vector<std::string>{std::string(name)}) << w;
            EXPECT_EQ(std::ranges::count(picture.things, name, &picture_thing::name), 1) << name;
        }
    }
}

TEST(Picture, ShowsEveryCommandOnceWithItsName) {
    for (const auto& [w, h] : sizes) {
        const station_picture picture = draw_station(scene_at_work(), w, h);
        for (const std::string_view name : station_outputs) {
            const auto shapes = shapes_of(picture, name);
            EXPECT_EQ(texts_of(shapes), std::vector<std::string>{std::string(name)}) << w;
            EXPECT_EQ(std::ranges::count(picture.things, name, &picture_thing::name), 1) << name;
        }
    }
}

/// The kinds and colours of a lamp: of what is not its name.
std::set<std::pair<shape_kind, ink>> look_of_lamp(std::size_t place, std::int32_t value) {
    station_scene scene;
    scene.sensors[place] = value;
    std::set<std::pair<shape_kind, ink>> look;
    for (const picture_shape& each : shapes_of(draw(scene), station_inputs[place]))
        if (each.kind != shape_kind::text) look.insert({each.kind, each.colour});
    return look;
}

TEST(Picture, ALampHasThePanelsColourAndAShapeForOneForZeroAndForAnyOtherValue) {
    EXPECT_EQ(rgb_of(ink::lamp_one), 0xFF0000U);
    EXPECT_EQ(rgb_of(ink::lamp_zero), 0x0000FFU);
    for (std::size_t i = 0; i < station_inputs.size(); ++i) {
        const auto one = look_of_lamp(i, 1), zero = look_of_lamp(i, 0), odd = look_of_lamp(i, 2);
        EXPECT_TRUE(one.contains({shape_kind::bound_disc, ink::lamp_one})) << station_inputs[i];
        EXPECT_TRUE(zero.contains({shape_kind::bound, ink::lamp_zero})) << station_inputs[i];
        EXPECT_FALSE(odd.contains({shape_kind::bound_disc, ink::lamp_one})) << station_inputs[i];
        EXPECT_FALSE(odd.contains({shape_kind::bound, ink::lamp_zero})) << station_inputs[i];
        for (const std::int32_t other : {-1, 3, 256, std::numeric_limits<std::int32_t>::min()})
            EXPECT_EQ(look_of_lamp(i, other), odd) << station_inputs[i] << other;
    }
}

TEST(Picture, LampsAndCommandsAreToldApartInGreyTones) {
    EXPECT_GT(grey_of(rgb_of(ink::lamp_one)) - grey_of(rgb_of(ink::lamp_zero)), 40);
    EXPECT_GT(grey_of(rgb_of(ink::unlit)) - grey_of(rgb_of(ink::lit)), 40);
}

TEST(Picture, ALampShowsWhatThePanelSeesAndTheMechanismWhatIs) {
    station_scene honest, faulty;
    honest.state.drawer_out = faulty.state.drawer_out = 1;
    honest.sensors[static_cast<std::size_t>(place_of(station_input::te))] = 0;
    faulty.sensors[static_cast<std::size_t>(place_of(station_input::te))] = 1;
    EXPECT_EQ(shapes_of(draw(honest), "drawer"), shapes_of(draw(faulty), "drawer"));
    EXPECT_NE(shapes_of(draw(honest), "te"), shapes_of(draw(faulty), "te"));
}

TEST(Picture, ACommandIsLitWhenItIsExactlyOne) {
    for (std::size_t i = 0; i < station_outputs.size(); ++i)
        for (const std::int32_t value : {0, 1, 2, -1, 257}) {
            station_scene scene;
            scene.commands[i] = value;
            const auto shapes = shapes_of(draw(scene), station_outputs[i]);
            EXPECT_EQ(shapes.front().colour == ink::lit, value == 1) << station_outputs[i] << value;
            const auto others = shapes_of(draw(scene), station_outputs[(i + 1) % 13]);
            EXPECT_EQ(others.front().colour, ink::unlit) << station_outputs[i] << value;
        }
}

TEST(Picture, ACommandThatIsNeitherZeroNorOneShowsItsValue) {
    for (std::size_t i = 0; i < station_outputs.size(); ++i)
        for (const std::int32_t value : {2, -1, std::numeric_limits<std::int32_t>::min(),
                                         std::numeric_limits<std::int32_t>::max()}) {
            station_scene scene;
            scene.commands[i] = value;
            EXPECT_EQ(
                texts_of(shapes_of(draw(scene), station_outputs[i])),
                (std::vector<std::string>{std::string(station_outputs[i]), std::to_string(value)}));
        }
}

TEST(Picture, ABaseShowsItsGlueItsPartAndItsStamp) {
    for (const bool glue : {false, true})
        for (const bool part : {false, true})
            for (const bool pressed : {false, true}) {
                station_scene scene;
                scene.state.bases = {{1, 500, glue, part, pressed, glue ? 1.0 : 0.0}};
                const auto shapes = shapes_of(draw(scene), "base");
                EXPECT_EQ(has(shapes, shape_kind::fill, ink::glue), glue);
                EXPECT_EQ(has(shapes, shape_kind::bound, ink::part), part);
                EXPECT_EQ(has(shapes, shape_kind::fill, ink::stamp), pressed);
            }
}

TEST(Picture, StocksAndCountsAreInFigures) {
    for (const int stock : {0, 1, 4, 7, 1000, 1'000'000}) {
        station_scene scene;
        scene.state.bases_in_stock = scene.state.parts_in_magazine = stock;
        scene.state.good = stock + 1;
        scene.state.bad = stock + 2;
        scene.state.incidents = stock + 3;
        scene.state.parts_lost = stock + 4;
        const station_picture picture = draw(scene);
        const auto text = [](int number) { return std::to_string(number); };
        EXPECT_EQ(texts_of(shapes_of(picture, "loader")),
                  (std::vector<std::string>{"réserve", text(stock)}));
        EXPECT_EQ(texts_of(shapes_of(picture, "magazine")), std::vector<std::string>{text(stock)});
        EXPECT_EQ(texts_of(shapes_of(picture, "counts")),
                  (std::vector<std::string>{"bonnes", text(stock + 1), "mauvaises", text(stock + 2),
                                            "incidents", text(stock + 3), "pièces perdues",
                                            text(stock + 4)}));
        EXPECT_EQ(has(shapes_of(picture, "magazine"), shape_kind::bound, ink::part), stock > 0);
        EXPECT_EQ(has(shapes_of(picture, "loader"), shape_kind::bound, ink::base), stock > 0);
    }
}

TEST(Picture, TheCupShowsItsSuctionAndItsVacuum) {
    const struct {
        bool suction, vacuum;
        ink lip;
    } cases[] = {
        {false, false, ink::white}, {true, false, ink::suction}, {true, true, ink::vacuum}};
    for (const auto& [suction, vacuum, lip] : cases) {
        station_scene scene;
        scene.state.suction = suction;
        scene.state.vacuum = vacuum;
        const auto shapes = shapes_of(draw(scene), "suction_cup");
        for (const ink each : {ink::white, ink::suction, ink::vacuum})
            EXPECT_EQ(has(shapes, shape_kind::bound, each), each == lip) << suction << vacuum;
    }
}

TEST(Picture, ThePressCountsItsTenSeconds) {
    int width = 0;
    for (const auto& [held, text] :
         {std::pair{0.0, "0 s"}, {0.99, "0 s"}, {1.0, "1 s"}, {9.99, "9 s"}, {10.0, "10 s"}}) {
        station_scene scene;
        scene.state.press_held_s = held;
        const auto shapes = shapes_of(draw(scene), "press_timer");
        EXPECT_EQ(texts_of(shapes), std::vector<std::string>{text}) << held;
        int bar = 0;
        for (const picture_shape& each : shapes)
            if (each.colour == ink::lit) bar = each.box.w;
        EXPECT_GE(bar, width) << held;
        EXPECT_EQ(bar > 0, held > 0) << held;
        width = bar;
    }
}

TEST(Picture, GlueRunsOntoTheBaseOrPastIt) {
    const auto end_of_glue = [](bool base_below) {
        station_scene scene;
        scene.state.dispensing = true;
        if (base_below) scene.state.bases = {{1, 300, false, false, false, 0}};
        const auto shapes = shapes_of(draw(scene), "glue_dispenser");
        for (const picture_shape& each : shapes)
            if (each.colour == ink::glue) return each.box.y + each.box.h;
        return 0;
    };
    const picture_box belt = around(shapes_of(draw({}), "main_belt"));
    EXPECT_EQ(end_of_glue(false), belt.y);
    EXPECT_LT(end_of_glue(true), belt.y);
    EXPECT_GT(end_of_glue(true), 0);
}

TEST(Picture, IsTheSameForTheSameScene) {
    random_scenes random(5), again(5);
    for (int i = 0; i < 300; ++i) ASSERT_TRUE(draw(random.next()) == draw(again.next())) << i;
}

TEST(Picture, TheTimeAloneIsNotDrawn) {
    station_scene now = scene_at_work(), later = now;
    later.state.time_s += 12.5;
    EXPECT_TRUE(now.same_drawing(later));
    EXPECT_TRUE(draw(now) == draw(later));
}

TEST(Picture, AnythingElseIsAnotherDrawing) {
    const std::function<void(station_scene&)> changes[] = {
        [](station_scene& scene) { scene.state.bases.pop_back(); },
        [](station_scene& scene) { scene.state.bases[0].pressed = true; },
        [](station_scene& scene) { scene.state.drawer_out = 0.3; },
        [](station_scene& scene) { scene.state.main_belt_um += 10'000; },
        [](station_scene& scene) { scene.state.emergency_stop = true; },
        [](station_scene& scene) { scene.state.parts_lost = 9; },
        [](station_scene& scene) { scene.sensors[3] ^= 1; },
        [](station_scene& scene) { scene.commands[3] ^= 1; },
        [](station_scene& scene) { scene.desk.dc = true; },
        [](station_scene& scene) { scene.mode = session_mode::paused; },
        [](station_scene& scene) { scene.english = true; },
        [](station_scene& scene) { scene.title = "poste 8"; }};
    for (const auto& change : changes) {
        station_scene scene = scene_at_work();
        change(scene);
        const auto place = &change - changes;
        EXPECT_FALSE(scene.same_drawing(scene_at_work())) << place;
        EXPECT_FALSE(draw(scene) == draw(scene_at_work())) << place;
    }
}

TEST(Picture, ALongTitleIsCutBetweenCharacters) {
    station_scene scene;
    for (int i = 0; i < 300; ++i) scene.title += "é";
    const auto texts = texts_of(shapes_of(draw(scene), "title"));
    ASSERT_EQ(texts.size(), 1U);
    ASSERT_TRUE(texts[0].ends_with("…"));
    const std::string kept = texts[0].substr(0, texts[0].size() - 3);
    EXPECT_GT(kept.size(), 10U);
    EXPECT_EQ(kept, scene.title.substr(0, kept.size()));
    EXPECT_EQ(kept.size() % 2, 0U);
    scene.title = "poste 7";
    EXPECT_EQ(texts_of(shapes_of(draw(scene), "title")), std::vector<std::string>{"poste 7"});
    scene.title.clear();
    EXPECT_TRUE(shapes_of(draw(scene), "title").empty());
}

TEST(Picture, ThePushedButtonsOfTheDeskAreDown) {
    const auto top = [](bool station_desk::*button, bool pushed, std::size_t place) {
        station_scene scene;
        scene.desk.*button = pushed;
        std::vector<int> tops;
        for (const picture_shape& each : shapes_of(draw(scene), "desk"))
            if (each.kind == shape_kind::bound &&
                (each.colour == ink::lit || each.colour == ink::black || each.colour == ink::alarm))
                tops.push_back(each.box.y);
        return tops.at(place);
    };
    constexpr bool station_desk::*buttons[] = {&station_desk::dc, &station_desk::ac,
                                               &station_desk::atu};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t other = 0; other < 3; ++other)
            EXPECT_EQ(top(buttons[i], true, other) > top(buttons[i], false, other), i == other);
}

}  // namespace
