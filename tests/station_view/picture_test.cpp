// What is drawn, and what it says when it is pointed at.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <sstream>

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

TEST(Picture, EachModeAndAnEmergencyStopLooksDifferent) {
    for (const bool stopped : {false, true}) {
        std::set<std::vector<std::string>> texts;
        std::vector<station_picture> seen;
        for (int mode = 0; mode < static_cast<int>(session_mode::count); ++mode) {
            station_scene scene = scene_at_work();
            scene.mode = static_cast<session_mode>(mode);
            scene.state.emergency_stop = stopped;
            const station_picture picture = draw(scene);
            EXPECT_TRUE(texts.insert(texts_of(picture.shapes)).second) << mode;
            for (const station_picture& other : seen) EXPECT_FALSE(picture == other) << mode;
            seen.push_back(picture);
            EXPECT_EQ(picture.background == ink::paper, scene.mode == session_mode::running)
                << mode;
            EXPECT_EQ(has(picture.shapes, shape_kind::fill, ink::alarm), stopped) << mode;
        }
    }
}

TEST(Picture, SaysHowTheSessionGoes) {
    const struct {
        session_mode mode;
        const char *thing, *french, *english;
    } cases[] = {{session_mode::running, "running", "en marche", "running"},
                 {session_mode::paused, "paused", "PAUSE", "PAUSED"},
                 {session_mode::replay, "replay", "REJEU", "REPLAY"},
                 {session_mode::replay_paused, "replay_paused", "REJEU EN PAUSE", "REPLAY PAUSED"},
                 {session_mode::link_dead, "link_dead", "LIAISON PERDUE", "LINK LOST"},
                 {session_mode::over, "over", "SESSION TERMINÉE", "SESSION OVER"}};
    for (const auto& [mode, thing, french, english] : cases) {
        station_scene scene;
        scene.mode = mode;
        EXPECT_EQ(texts_of(shapes_of(draw(scene), thing)), std::vector<std::string>{french});
        scene.english = true;
        EXPECT_EQ(texts_of(shapes_of(draw(scene), thing)), std::vector<std::string>{english});
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

TEST(Picture, TellsOfABaseWhatItIs) {
    station_scene scene;
    scene.state.bases = {{7, 500, true, false, false, 1}};
    EXPECT_EQ(around(shapes_of(draw(scene), "base")), shapes_of(draw(scene), "base").front().box);
    const auto told = [&scene] {
        const picture_box base = around(shapes_of(draw(scene), "base"));
        const station_picture picture = draw(scene);
        return thing_at(picture, base.x + 2, base.y + base.h - 2)->sentence;
    };
    EXPECT_EQ(told(), "Support n° 7, collé, sans pièce, non pressé : MTA puis MT le font avancer.");
    scene.english = true;
    EXPECT_EQ(told(),
              "Base no. 7, glued, without a part, not pressed: MTA, then MT carry it along.");
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
        EXPECT_EQ(
            texts_of(shapes_of(picture, "counts")),
            (std::vector<std::string>{"bonnes", text(stock + 1), "mauvaises", text(stock + 2),
                                      "incidents", text(stock + 3), "perdues", text(stock + 4)}));
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

// What belongs to each part of the station, by docs/workcell.md.
TEST(Picture, EverySentenceNamesWhatBelongsToIt) {
    const struct {
        const char *thing, *names;
    } cases[] = {{"waiting_belt", "MTA"},
                 {"main_belt", "MT"},
                 {"base", "MTA MT"},
                 {"glue_dispenser", "DEPOSE colle"},
                 {"magazine", "te pp"},
                 {"drawer", "RENT SORT te ts pp"},
                 {"suction_cup", "DESV MONV ASPI vb vh vide"},
                 {"press", "DESP MONP pb ph timer10_term"},
                 {"press_timer", "timer10_term"},
                 {"blocker_1", "BZ1 b1e b1s p1ok"},
                 {"blocker_2", "BZ2 b2e b2s p2ok"},
                 {"blocker_3", "BZ3 b3e b3s p3ok"},
                 {"desk", "dc ac atu init"}};
    for (const bool english : {false, true}) {
        station_scene scene = scene_at_work();
        scene.english = english;
        const station_picture picture = draw(scene);
        for (const auto& [thing, names] : cases) {
            const auto found = std::ranges::find(picture.things, thing, &picture_thing::name);
            ASSERT_NE(found, picture.things.end()) << thing;
            std::istringstream words(names);
            for (std::string name; words >> name;)
                EXPECT_NE(found->sentence.find(name), std::string::npos) << thing << ' ' << name;
        }
        for (const name_span names : {name_span(station_inputs), name_span(station_outputs)})
            for (const std::string_view name : names) {
                const auto found = std::ranges::find(picture.things, name, &picture_thing::name);
                ASSERT_NE(found, picture.things.end()) << name;
                EXPECT_TRUE(found->sentence.starts_with(std::string(name) + (english ? ":" : " :")))
                    << found->sentence;
            }
    }
}

TEST(Picture, EveryShapeBelongsToAThingWithOneSentence) {
    for (const bool english : {false, true}) {
        station_scene scene = widest_scene();
        scene.english = english;
        const station_picture picture = draw(scene);
        for (const picture_shape& each : picture.shapes) ASSERT_GE(each.thing, 0) << each.text;
        for (const picture_thing& each : picture.things) {
            EXPECT_TRUE(each.sentence.ends_with(".")) << each.name;
            EXPECT_EQ(each.sentence.find('\n'), std::string::npos) << each.name;
        }
    }
}

TEST(Picture, EnglishSaysEverythingElseInEnglish) {
    station_scene french = widest_scene(), english = widest_scene();
    english.english = true;
    const station_picture one = draw(french), other = draw(english);
    ASSERT_EQ(one.things.size(), other.things.size());
    for (std::size_t i = 0; i < one.things.size(); ++i) {
        EXPECT_EQ(one.things[i].name, other.things[i].name);
        EXPECT_NE(one.things[i].sentence, other.things[i].sentence);
        for (const char byte : other.things[i].sentence)
            EXPECT_LT(static_cast<unsigned char>(byte), 0x80) << other.things[i].sentence;
    }
}

TEST(Picture, EverythingCanBePointedAt) {
    for (const auto& [w, h] : sizes) {
        const station_picture picture = draw_station(scene_at_work(), w, h);
        for (const picture_thing& thing : picture.things) {
            const auto shapes = shapes_of(picture, thing.name);
            const bool found = std::ranges::any_of(shapes, [&](const picture_shape& each) {
                const picture_thing* const at =
                    thing_at(picture, each.box.x + each.box.w / 2, each.box.y + each.box.h / 2);
                return at && at->name == thing.name;
            });
            EXPECT_TRUE(found || shapes.empty()) << thing.name << " on " << w << " x " << h;
        }
        EXPECT_EQ(thing_at(picture, 0, 0), nullptr);
        EXPECT_EQ(thing_at(picture, -100, 50), nullptr);
        EXPECT_EQ(thing_at(picture, w + 100, h + 100), nullptr);
    }
}

TEST(Picture, ANearMissMeansTheNearThing) {
    const station_picture picture = draw(scene_at_work());
    const picture_box name = shapes_of(picture, "MTA").back().box;
    const picture_thing* const below = thing_at(picture, name.x + 5, name.y + name.h + 1);
    ASSERT_NE(below, nullptr);
    EXPECT_EQ(below->name, "MTA");
    EXPECT_EQ(thing_at(picture, name.x + 5, name.y + name.h + 10), nullptr);
}

TEST(Picture, AnOddValueIsToldWhereItIsPointedAt) {
    station_scene scene;
    scene.sensors[0] = scene.commands[0] = 42;
    const station_picture picture = draw(scene);
    for (const std::string_view name : {station_inputs[0], station_outputs[0]})
        EXPECT_TRUE(std::ranges::find(picture.things, name, &picture_thing::name)
                        ->sentence.ends_with("Valeur reçue : 42."));
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
