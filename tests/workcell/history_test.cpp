// The same seed, commands and time: the same history, however the time is cut.
#include <cmath>
#include <limits>
#include <random>

#include "tests/workcell/station_driver.h"

namespace {

constexpr std::uint64_t hash_start = 14695981039346656037ull;

void add_to_hash(std::uint64_t& hash, std::uint64_t value) {
    hash = (hash ^ value) * 1099511628211ull;
}

// Every sensor, and the places that no sensor sees.
void add_state(std::uint64_t& hash, const workcell_model& model) {
    for (int i = 0; i < place_of(station_input::count); ++i)
        add_to_hash(hash, static_cast<std::uint64_t>(model.sensor(i)));
    const workcell_state state = model.state();
    for (const workcell_base& each : state.bases)
        add_to_hash(hash, static_cast<std::uint64_t>(std::llround(each.front_mm * 1000)));
    for (const double fraction : {state.drawer_out, state.cup_down, state.press_down})
        add_to_hash(hash, static_cast<std::uint64_t>(std::llround(fraction * 1e6)));
    add_to_hash(hash, static_cast<std::uint64_t>(state.incidents));
    add_to_hash(hash, static_cast<std::uint64_t>(std::llround(state.time_s * 1000)));
}

// Sets a few commands at random, as a whole; the same numbers each time.
void set_at_random(workcell_model& model, std::mt19937_64& random) {
    for (int i = 0; i < place_of(station_output::count); ++i)
        if (random() % 4 == 0) model.set_command(i, static_cast<int>(random() % 2));
    model.set_desk({.atu = random() % 10 == 0});
}

// Ten minutes of random commands, a second of `advance` each.
template <typename Advance>
std::uint64_t history(std::uint64_t seed, Advance advance) {
    station_driver driven(seed);
    std::mt19937_64 random(99);
    std::uint64_t hash = hash_start;
    for (int second = 0; second < 600; ++second) {
        set_at_random(driven.model, random);
        advance(driven, hash);
        add_state(hash, driven.model);
    }
    for (const station_incident& each : driven.take_incidents()) {
        add_to_hash(hash, static_cast<std::uint64_t>(each.ms));
        for (const char c : each.text) add_to_hash(hash, static_cast<unsigned char>(c));
    }
    return hash;
}

TEST(History, IsTheSameTwiceAtEveryStep) {
    const auto every_step = [](station_driver& driven, std::uint64_t& hash) {
        for (int i = 0; i < 100; ++i) {
            driven.step(0.010);
            add_state(hash, driven.model);
        }
    };
    EXPECT_EQ(history(42, every_step), history(42, every_step));
    EXPECT_NE(history(42, every_step), history(43, every_step));
}

TEST(History, DoesNotDependOnHowTheTimeIsCut) {
    const auto cut = [](double seconds, int times) {
        return [=](station_driver& driven, std::uint64_t&) {
            for (int i = 0; i < times; ++i) driven.step(seconds);
        };
    };
    const std::uint64_t whole = history(42, cut(1.0, 1));
    EXPECT_EQ(history(42, cut(0.010, 100)), whole);
    EXPECT_EQ(history(42, cut(0.001, 1000)), whole);
    EXPECT_EQ(history(42, cut(0.0001, 10'000)), whole);
    EXPECT_EQ(history(42, cut(0.0625, 16)), whole);
    EXPECT_EQ(history(42, cut(0.008, 125)), whole);
    const auto uneven = [](station_driver& driven, std::uint64_t&) {
        for (const double part : {0.0003, 0.0197, 0.33, 0.1501, 0.4999}) driven.step(part);
    };
    EXPECT_EQ(history(42, uneven), whole);
}

TEST(Step, NothingHappensForWhatIsNoTime) {
    workcell_model model(1);
    model.set_command(place_of(station_output::BZ1), 1);
    for (const double nothing :
         {0.0, -0.0, -1.0, -1e300, std::nan(""), -std::numeric_limits<double>::infinity()})
        model.step(nothing);
    EXPECT_EQ(model.state().time_s, 0);
    EXPECT_EQ(model.state().blockers_out[0], 0);
}

TEST(Step, TakesCommandsAndDeskWhenItsFirstWholeMillisecondBegins) {
    for (const bool stopped : {false, true}) {
        workcell_model model(1);
        model.step(0.0004);
        model.set_command(place_of(station_output::BZ1), 1);
        model.set_desk({.atu = stopped});
        model.step(0.0006);
        EXPECT_EQ(model.state().time_s, 0.001);
        EXPECT_EQ(model.state().blockers_out[0] > 0, !stopped);
    }
}

TEST(Step, AdvancesAnHourAtMost) {
    for (const double much : {3600.0, 3601.0, 1e300, std::numeric_limits<double>::infinity()}) {
        workcell_model model(1, {0, 0});
        model.step(much);
        EXPECT_EQ(model.state().time_s, 3600);
    }
}

TEST(Incidents, AreThoseOfTheLastStepEachWithTheEndOfItsMillisecond) {
    workcell_model model(1);
    model.step(1.234);
    EXPECT_TRUE(model.incidents().empty());
    model.set_command(place_of(station_output::DEPOSE), 1);
    model.step(0.010);
    ASSERT_EQ(model.incidents().size(), 1u);
    EXPECT_EQ(model.incidents()[0].ms, 1235);
    EXPECT_EQ(model.incidents()[0].text, glue_spilled);
    EXPECT_EQ(model.state().incidents, 1);
    for (const double next : {0.010, 0.0}) {
        model.step(next);
        EXPECT_TRUE(model.incidents().empty());
    }
    EXPECT_EQ(model.state().incidents, 1);
}

TEST(Supplies, NoneOrFewerLeaveTheStationEmpty) {
    for (const workcell_supplies none : {workcell_supplies{0, 0}, workcell_supplies{-5, -5}}) {
        workcell_model model(1, none);
        model.set_command(place_of(station_output::MTA), 1);
        model.step(60);
        EXPECT_TRUE(model.state().bases.empty());
        EXPECT_EQ(model.state().bases_in_stock, 0);
        EXPECT_EQ(model.sensor(place_of(station_input::pp)), 0);
    }
}

}  // namespace
