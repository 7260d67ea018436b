// How the drawing tells how the session goes: its modes, and an emergency stop in any of them.
#include <gtest/gtest.h>

#include <set>

#include "tests/station_view/looking.h"
#include "tests/station_view/scenes.h"

namespace {

station_picture draw(const station_scene& scene) { return draw_station(scene, 1920, 700); }

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
                 {session_mode::link_dead, "link_dead", "LIAISON SANS COMMANDE", "NOBODY COMMANDS"},
                 {session_mode::over, "over", "SESSION TERMINÉE", "SESSION OVER"}};
    for (const auto& [mode, thing, french, english] : cases) {
        station_scene scene;
        scene.mode = mode;
        EXPECT_EQ(texts_of(shapes_of(draw(scene), thing)), std::vector<std::string>{french});
        scene.english = true;
        EXPECT_EQ(texts_of(shapes_of(draw(scene), thing)), std::vector<std::string>{english});
    }
}

TEST(Picture, AnEmergencyStopIsSeenBeforeAPausedStationTakesIt) {
    station_scene scene = scene_at_work();
    scene.mode = session_mode::paused;
    EXPECT_TRUE(shapes_of(draw(scene), "emergency_stop").empty());
    scene.desk.atu = true;
    EXPECT_EQ(texts_of(shapes_of(draw(scene), "emergency_stop")),
              std::vector<std::string>{"ARRÊT D'URGENCE"});
}

TEST(Picture, AStationThatIsStoppedDoesNotSayThatItRuns) {
    const struct {
        session_mode mode;
        std::vector<std::string> french, english;
    } cases[] = {{session_mode::running,
                  {"arrêt d'urgence", "ARRÊT D'URGENCE"},
                  {"emergency stop", "EMERGENCY STOP"}},
                 {session_mode::paused, {"ARRÊT D'URGENCE"}, {"EMERGENCY STOP"}},
                 {session_mode::replay, {"ARRÊT D'URGENCE"}, {"EMERGENCY STOP"}},
                 {session_mode::link_dead, {"ARRÊT D'URGENCE"}, {"EMERGENCY STOP"}}};
    for (const auto& [mode, french, english] : cases) {
        station_scene scene = scene_at_work();
        scene.mode = mode;
        scene.state.emergency_stop = true;
        EXPECT_EQ(texts_of(shapes_of(draw(scene), "emergency_stop")), french);
        EXPECT_TRUE(texts_of(shapes_of(draw(scene), "running")).empty());
        scene.english = true;
        EXPECT_EQ(texts_of(shapes_of(draw(scene), "emergency_stop")), english);
    }
}

}  // namespace
