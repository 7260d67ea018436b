// What the drawing says when something on it is pointed at.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/station_view/looking.h"
#include "tests/station_view/scenes.h"

namespace {

station_picture draw(const station_scene& scene) { return draw_station(scene, 1920, 700); }

TEST(Pointing, TellsOfABaseWhatItIs) {
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

// What belongs to each part of the station, by docs/workcell.md.
TEST(Pointing, EverySentenceNamesWhatBelongsToIt) {
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

TEST(Pointing, EveryShapeBelongsToAThingWithOneSentence) {
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

TEST(Pointing, EnglishSaysEverythingElseInEnglish) {
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

TEST(Pointing, EverythingCanBePointedAt) {
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

TEST(Pointing, ANearMissMeansTheNearThing) {
    const station_picture picture = draw(scene_at_work());
    const picture_box name = shapes_of(picture, "MTA").back().box;
    const picture_thing* const below = thing_at(picture, name.x + 5, name.y + name.h + 1);
    ASSERT_NE(below, nullptr);
    EXPECT_EQ(below->name, "MTA");
    EXPECT_EQ(thing_at(picture, name.x + 5, name.y + name.h + 10), nullptr);
}

TEST(Pointing, AnOddValueIsToldWhereItIsPointedAt) {
    station_scene scene;
    scene.sensors[0] = scene.commands[0] = 42;
    const station_picture picture = draw(scene);
    for (const std::string_view name : {station_inputs[0], station_outputs[0]})
        EXPECT_TRUE(std::ranges::find(picture.things, name, &picture_thing::name)
                        ->sentence.ends_with("Valeur reçue : 42."));
}

}  // namespace
