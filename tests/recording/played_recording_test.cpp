// A recording of a station that is not there, played as it was recorded.
#include <gtest/gtest.h>

#include "recording/played_recording.h"
#include "tests/recording/recorded_session.h"

namespace {

const std::string recording =
    "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,inconnue\n"
    "0,entree,a,0\n0,entree,b,5\n0,sortie,C,1\n"
    "3,entree,a,1\n3,sortie,C,0\n17,entree,b,-2\n17,entree,a,0\n31,session,fin,fini\n";

/// A recording that is played, and what its readers get.
struct played_text {
    explicit played_text(const std::string& text)
        : bytes(text), reader("f", bytes), station(reader) {
        station.add_reader(kept);
    }
    std::stringbuf bytes;
    recording_reader reader;
    played_recording station;
    csv_keeper kept;
};

TEST(PlayedRecording, ItsReadersAreHandedTheRecordedRows) {
    for (std::size_t cut = 0; cut < 40; ++cut) {
        const std::string text = recording.substr(0, recording.size() - cut);
        played_text played(text);
        played.station.play_all();
        EXPECT_EQ(played.kept.text, text.substr(0, text.rfind('\n') + 1));
    }
}

TEST(PlayedRecording, ItsSensorsFollowTheRows) {
    played_text played(recording);
    EXPECT_EQ(played.station.name(), "inconnue");
    station_run run(played.station);
    played.station.before_begin(run);
    run.begin("");
    const struct { int a, b; } after[] = {{1, 5}, {0, -2}, {0, -2}, {0, -2}};
    EXPECT_EQ(played.station.sensor(1), 5);
    for (const auto& [a, b] : after) {
        EXPECT_FALSE(played.station.before_step(run));
        run.step([&](int output) { return played.station.command(output); });
        EXPECT_EQ(played.station.sensor(0), a) << run.ms();
        EXPECT_EQ(played.station.sensor(1), b) << run.ms();
    }
    EXPECT_EQ(played.station.before_step(run), "fini");
    EXPECT_EQ(played.kept.text, recording);
    EXPECT_EQ(played.station.sensor(-1), 0);
    EXPECT_EQ(played.station.sensor(2), 0);
}

TEST(PlayedRecording, WhatItMadeAndWhatWentWrongIsToldAgain) {
    played_text played(
        "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,essai\n0,session,taille,3\n"
        "0,pupitre,dc,0\n0,pupitre,ac,0\n0,pupitre,atu,0\n0,entree,a,0\n0,sortie,C,0\n"
        "7,incident,1,choc\n10,session,bonnes,2\n10,session,mauvaises,1\n10,session,incidents,1\n");
    ASSERT_EQ(played.station.facts().size(), 1U);
    EXPECT_EQ(played.station.facts()[0].value, "3");
    played.station.step(0.010);
    ASSERT_EQ(played.station.incidents().size(), 1U);
    EXPECT_EQ(played.station.incidents()[0].ms, 7);
    EXPECT_EQ(played.station.incidents()[0].text, "choc");
    EXPECT_EQ(played.station.counts(), (station_counts{2, 1}));
    played.station.step(0.010);
    EXPECT_TRUE(played.station.incidents().empty());
}

TEST(PlayedRecording, ASessionThatEndsBeforeItsRecordingTellsItsOwnEnd) {
    played_text played(recording);
    station_run run(played.station);
    run.add_reader(played.station);
    played.station.before_begin(run);
    run.begin("");
    run.step([](int) { return 0; });
    run.finish("fin demandée");
    EXPECT_TRUE(played.kept.text.ends_with("3,sortie,C,0\n10,session,fin,fin demandée\n"))
        << played.kept.text;
}

}  // namespace
