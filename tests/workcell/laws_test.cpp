// Simulated hours under random commands: nothing that the station does breaks a physical law, also
// while what moves is slow now and then.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <set>
#include <string>

#include "tests/workcell/station_driver.h"

namespace {

constexpr int supplies = 100'000;

// Half the time an operator makes bases as documented, slips and forgets now and then; half the
// time any command comes.
class random_hand {
public:
    random_hand(station_driver& driven, std::uint64_t seed) : driven_(driven), random_(seed) {}

    void before_step() {
        if (--left_in_mood_ <= 0) change_mood();
        if (chance(2000)) stopped_ = true;
        if (chance(100)) stopped_ = false;
        driven_.stop(stopped_);
        if (wild_ ? chance(15) : chance(20'000)) toggle_any();
        if (!wild_) go_on_working();
    }

private:
    bool chance(std::uint64_t one_in) { return random_() % one_in == 0; }

    void change_mood() {
        wild_ = chance(2);
        left_in_mood_ = static_cast<int>(random_() % 60'000);
        for (int i = 0; i < static_cast<int>(station_outputs.size()); ++i)
            driven_.model.set_command(i, 0);
        at_ = 0;
        waited_ = 0;
    }

    void toggle_any() {
        driven_.model.set_command(static_cast<int>(random_() % station_outputs.size()),
                                  static_cast<int>(random_() % 2));
    }

    // Sets the next commands after their time, when the sensor that is waited for has come or 15 s
    // went in vain.
    void go_on_working() {
        static const struct {
            const char *commands, *sensor;
            int value, at_least_steps;
        } work[] = {{"DEPOSE=0 ASPI=0 SORT=0 RENT=1 DESV=0 MONV=1 DESP=0 MONP=1 BZ1=0 BZ2=0 BZ3=0 "
                     "MT=1 MTA=0",
                     "pp", 1, 1300},
                    {"RENT=0 MONV=0 MONP=0 BZ1=1 BZ2=1 BZ3=1 MT=0 MTA=1", "te", 1, 400},
                    {"MT=1", "te", 1, 100},
                    {"MTA=0", "p1ok", 1, 1},
                    {"DEPOSE=1", "colle", 1, 1},
                    {"DEPOSE=0 BZ1=0", "p2ok", 1, 1},
                    {"MONV=0 SORT=1", "ts", 1, 1},
                    {"SORT=0 DESV=1", "vb", 1, 1},
                    {"ASPI=1", "vide", 1, 1},
                    {"DESV=0 MONV=1", "vh", 1, 1},
                    {"MONV=0 RENT=1", "te", 1, 1},
                    {"RENT=0 DESV=1", "vb", 1, 1},
                    {"ASPI=0", "vide", 0, 1},
                    {"DESV=0 MONV=1", "vh", 1, 1},
                    {"MONV=0 BZ2=0", "p3ok", 1, 1},
                    {"DESP=1", "timer10_term", 1, 1},
                    {"DESP=0 MONP=1", "ph", 1, 1},
                    {"MONP=0 BZ3=0", "p3ok", 0, 1}};
        const auto& [commands, sensor, value, at_least_steps] = work[at_];
        if (waited_++ == 0 && !chance(100)) driven_.set(commands);
        if (waited_ <= at_least_steps || (driven_.sensor(sensor) != value && waited_ < 1500))
            return;
        waited_ = 0;
        // Now and then a second part is fetched for the same base.
        at_ = at_ == 13 && chance(10) ? 6 : (at_ + 1) % std::size(work);
    }

    station_driver& driven_;
    std::mt19937_64 random_;
    bool wild_ = false, stopped_ = false;
    int left_in_mood_ = 0, waited_ = 0;
    std::size_t at_ = 0;
};

bool no_sensor_pair_contradicts(const station_driver& driven) {
    for (const auto& [one, other] : {std::pair{"b1e", "b1s"},
                                     {"b2e", "b2s"},
                                     {"b3e", "b3s"},
                                     {"te", "ts"},
                                     {"vh", "vb"},
                                     {"ph", "pb"}})
        if (driven.sensor(one) == 1 && driven.sensor(other) == 1) return false;
    return true;
}

long um(const workcell_base& each) { return std::lround(each.front_mm * 1000); }

bool no_two_bases_overlap(const workcell_state& now) {
    for (std::size_t i = 1; i < now.bases.size(); ++i) {
        const long apart_um = um(now.bases[i - 1]) - um(now.bases[i]);
        if (apart_um < (now.bases[i].front_mm <= 0 ? 100'000 : 80'000)) return false;
    }
    return true;
}

bool nothing_appears_or_vanishes(const workcell_state& now) {
    const int on_belts = static_cast<int>(now.bases.size());
    const auto carrying =
        std::ranges::count_if(now.bases, [](const workcell_base& each) { return each.part; });
    return now.bases_in_stock + on_belts + now.good + now.bad == supplies &&
           now.parts_in_magazine + now.part_in_drawer + now.part_in_cup + carrying +
                   now.parts_lost + now.parts_left ==
               supplies;
}

bool no_blocker_is_in_a_base(const workcell_state& now) {
    constexpr double stops_mm[] = {300, 600, 900};
    for (std::size_t zone = 0; zone < 3; ++zone)
        for (const workcell_base& each : now.bases)
            if (now.blockers_out[zone] > 0.5 && each.front_mm > stops_mm[zone] &&
                um(each) - 80'000 < stops_mm[zone] * 1000)
                return false;
    return true;
}

// The press's head reaches from 830 to 890 mm; from a tenth of its height on it is in a base that
// is not at its stop.
bool under_press(const workcell_base& each) { return um(each) > 830'000 && um(each) < 970'000; }

bool the_press_is_in_no_base(const workcell_state& now) {
    for (const workcell_base& each : now.bases)
        if (now.press_down > 0.9 && under_press(each) && std::labs(um(each) - 900'000) > 5000)
            return false;
    return true;
}

bool every_motion_is_possible(const workcell_state& before, const workcell_state& now) {
    const bool cup_was_low = before.cup_down > 0.8 && now.cup_down > 0.8;
    if (cup_was_low && now.drawer_out != before.drawer_out) return false;
    std::map<int, workcell_base> old;
    for (const workcell_base& each : before.bases) old.emplace(each.number, each);
    for (const workcell_base& each : now.bases) {
        if (!old.contains(each.number)) continue;
        const workcell_base& was = old.at(each.number);
        const long moved_um = um(each) - um(was);
        if (moved_um < 0 || moved_um > 1000) return false;  // 100 mm/s at most, never back
        if (before.press_down > 0.02 && now.press_down > 0.02 && under_press(each) && moved_um > 0)
            return false;
        if (now.emergency_stop && moved_um > 0) return false;
    }
    return true;
}

// Runs that long, with `before_step` before each step; fails where a law is broken. Returns the
// state at the end.
template <typename BeforeStep>
workcell_state hold_for(int hours, station_driver& driven, BeforeStep before_step) {
    workcell_state before = driven.model.state();
    std::set<std::string> kinds;
    for (int step = 0; step < hours * 3600 * 100; ++step) {
        before_step();
        driven.step(0.010);
        workcell_state now = driven.model.state();
        EXPECT_TRUE(no_sensor_pair_contradicts(driven)) << now.time_s;
        EXPECT_TRUE(no_two_bases_overlap(now)) << now.time_s;
        EXPECT_TRUE(nothing_appears_or_vanishes(now)) << now.time_s;
        EXPECT_TRUE(no_blocker_is_in_a_base(now)) << now.time_s;
        EXPECT_TRUE(the_press_is_in_no_base(now)) << now.time_s;
        EXPECT_TRUE(every_motion_is_possible(before, now)) << now.time_s;
        if (testing::Test::HasFailure()) return now;
        for (const std::string& each : driven.incidents()) kinds.insert(each);
        before = std::move(now);
    }
    // The time was not spent standing still: all that can go wrong did.
    EXPECT_EQ(kinds.size(), static_cast<std::size_t>(station::incident::count));
    return before;
}

TEST(Laws, HoldForTenHoursOfRandomCommands) {
    station_driver driven(11, {supplies, supplies});
    random_hand hand(driven, 2024);
    const workcell_state before = hold_for(10, driven, [&] { hand.before_step(); });
    // Bases came out, good ones too.
    EXPECT_GT(before.good, 50);
    EXPECT_GT(before.bad, 50);
    RecordProperty("good", before.good);
    RecordProperty("bad", before.bad);
    RecordProperty("incidents", before.incidents);
}

TEST(Laws, HoldForFourHoursWhileWhatMovesIsSlowNowAndThen) {
    station_driver driven(12, {supplies, supplies});
    random_hand hand(driven, 2025);
    std::mt19937_64 random(7);
    const workcell_state end = hold_for(4, driven, [&] {
        if (random() % 500 == 0)
            driven.model.set_slow(static_cast<int>(random() % station_outputs.size()),
                                  random() % 4 == 0);
        hand.before_step();
    });
    EXPECT_GT(end.good, 5);
    EXPECT_GT(end.bad, 20);
}

}  // namespace
