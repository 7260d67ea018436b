// A replay that is taken back: the same events again, and each handed on once.
#include <gtest/gtest.h>

#include "recording/played_recording.h"
#include "tests/recording/recorded_session.h"

namespace {

/// A recording of the ZK4 station, run again at will.
struct replay_at_will {
    explicit replay_at_will(const std::string& text)
        : bytes(text),
          reader("f", bytes),
          model(workcell_of(reader.head().facts)),
          run(*model),
          again(reader) {
        run.add_reader(again);
        run.add_reader(seen);
        again.add_reader(kept);
        begin();
    }
    void begin() {
        again.before_begin(run);
        run.begin(again.title());
    }
    void to(std::int64_t ms) {
        while (run.ms() < ms && !again.before_step(run))
            run.step([&](int output) { return again.command(output); });
    }
    void back() {
        ASSERT_TRUE(again.restart());
        ASSERT_TRUE(run.restart());
        seen = {};
        begin();
    }

    std::stringbuf bytes;
    recording_reader reader;
    std::unique_ptr<workcell_model> model;
    station_run run;
    replay again;
    csv_keeper seen, kept;
};

TEST(TakenBack, WhatComesIsTheSameAndIsHandedOnOnce) {
    for (std::uint32_t seed = 0; seed < 30; ++seed) {
        const std::string recording = recorded_session(seed, 1500);
        replay_at_will test(recording);
        std::mt19937 random(seed);
        for (int i = 0; i < 6; ++i) {
            test.to(static_cast<std::int64_t>(random() % 1600) * 10);
            EXPECT_EQ(recording.compare(0, test.seen.text.size(), test.seen.text), 0) << seed;
            test.back();
        }
        test.to(15'000);
        const auto end = test.again.before_step(test.run);
        ASSERT_EQ(end, "fin demandée") << seed;
        test.run.finish(*end);
        EXPECT_EQ(test.again.difference(), "") << seed;
        EXPECT_EQ(test.seen.text, recording) << seed;
        EXPECT_EQ(test.kept.text, recording) << seed;
    }
}

TEST(TakenBack, AnotherStationsRecordingToo) {
    const std::string recording =
        "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,x\n0,entree,a,0\n0,sortie,C,1\n"
        "3,entree,a,1\n17,entree,a,0\n25,entree,a,4\n31,session,fin,fini\n";
    std::stringbuf bytes(recording);
    recording_reader reader("f", bytes);
    played_recording station(reader);
    csv_keeper kept;
    station.add_reader(kept);
    station_run run(station);
    for (int i = 0; i < 3; ++i) {
        station.before_begin(run);
        run.begin("");
        EXPECT_EQ(station.sensor(0), 0);
        for (const int value : {1, 0, 4})
            if (!station.before_step(run)) {
                run.step([](int) { return 0; });
                EXPECT_EQ(run.model().sensor(0), value) << run.ms();
            }
        ASSERT_TRUE(station.restart());
        ASSERT_TRUE(run.restart());
        EXPECT_EQ(run.model().inputs()[0], "a");
    }
    station.play_all();
    EXPECT_EQ(kept.text, recording);
}

TEST(TakenBack, WhatCanBeReadOnlyOnceCannot) {
    struct once : std::stringbuf {
        using std::stringbuf::stringbuf;
        pos_type seekpos(pos_type, std::ios_base::openmode) override {
            return pos_type(off_type(-1));
        }
    };
    once bytes(recorded_session(1, 10));
    recording_reader reader("f", bytes);
    replay again(reader);
    EXPECT_FALSE(again.restart());
}

}  // namespace
