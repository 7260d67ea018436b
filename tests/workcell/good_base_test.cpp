// A whole base made by hand, as the pages say it and as slowly as anybody may be; and what each
// thing left out makes of one.
#include <cctype>
#include <map>
#include <random>
#include <regex>

#include "tests/support/pages.h"
#include "tests/workcell/station_driver.h"

namespace {

// What a person does next: gives a command, waits for a sensor, or (without a name) counts seconds.
struct act {
    std::string name;
    int value;
    /// The page asks for it within a second of the act before it.
    bool in_a_hurry = false;
};
using acts = std::vector<act>;

std::sregex_iterator matches(const std::string& text, const std::regex& what) {
    return {text.begin(), text.end(), what};
}

// A cell of the table: `MTA` 1, within a second `MTA` 0, 12 s
void add_acts(const std::string& cell, acts& all) {
    static const std::regex one("(within a second )?`(\\w+)` ([01])|(\\d+) s");
    for (auto each = matches(cell, one); each != std::sregex_iterator(); ++each)
        if ((*each)[4].matched)
            all.push_back({"", std::stoi((*each)[4])});
        else
            all.push_back({(*each)[2], std::stoi((*each)[3]), (*each)[1].matched});
}

// The numbered rows of the station's page: commands in the second column, waits in the third.
acts table_of_a_good_base() {
    static const std::regex row(R"(\| \d+ \|([^|]*)\|([^|]*)\|.*)");
    acts all;
    std::smatch cells;
    for (const std::string& line :
         lines_of(section(page("docs/workcell.md"), "A good base, by hand")))
        if (std::regex_match(line, cells, row)) {
            add_acts(cells[1], all);
            add_acts(cells[2], all);
        }
    return all;
}

// The README's session: a click on each button that it names, a wait for each sensor to turn red.
acts first_session() {
    static const std::regex name("`([A-Za-z][A-Za-z0-9]*)`");
    const std::string text = section(page("README.md"), "A first session");
    acts all;
    std::map<std::string, int> buttons;
    for (auto each = matches(text, name); each != std::sregex_iterator(); ++each) {
        const std::string word = (*each)[1];
        all.push_back({word, std::isupper(word[0]) ? buttons[word] ^= 1 : 1});
    }
    return all;
}

int bases_of_first_session() {
    std::smatch number;
    const std::string text = section(page("README.md"), "A first session");
    return std::regex_search(text, number, std::regex("--bases (\\d+)")) ? std::stoi(number[1])
                                                                         : -1;
}

// Goes through acts in steps of 10 ms, and is late with every second one, by up to 15 s.
class slow_person {
public:
    slow_person(std::uint64_t seed, workcell_supplies supplies) : driven(seed, supplies) {
        chance_.seed(static_cast<unsigned>(seed));
    }
    station_driver driven;
    /// The time between an act and the one that has to follow it within a second.
    int hurry_least_ms = 100, hurry_most_ms = 1500;

    void play(const acts& all) {
        for (const act& each : all) {
            pause(each.in_a_hurry);
            if (each.name.empty())
                run(each.value * 1000);
            else if (std::isupper(each.name[0]))
                driven.set(each.name + "=" + std::to_string(each.value));
            else
                wait(each);
        }
    }

private:
    int between(int least, int most) { return std::uniform_int_distribution(least, most)(chance_); }
    void run(int ms) {
        for (int passed = 0; passed < ms; passed += 10) driven.step(0.010);
    }
    void pause(bool in_a_hurry) {
        if (in_a_hurry)
            run(between(hurry_least_ms, hurry_most_ms));
        else if (between(0, 1) == 1)
            run(between(0, 15'000));
    }
    void wait(const act& awaited) {
        for (int ms = 0; driven.sensor(awaited.name) != awaited.value; ms += 10) {
            ASSERT_LT(ms, 60'000) << awaited.name << " never became " << awaited.value;
            driven.step(0.010);
        }
    }

    std::mt19937 chance_;
};

void expect_counts(const slow_person& person, int good, int bad, std::uint64_t seed) {
    const workcell_state end = person.driven.model.state();
    EXPECT_EQ(end.good, good) << "seed " << seed;
    EXPECT_EQ(end.bad, bad) << "seed " << seed;
    EXPECT_EQ(end.incidents, 0) << "seed " << seed;
}

TEST(TableOfAGoodBase, IsReadFromThePage) {
    const acts all = table_of_a_good_base();
    EXPECT_GT(all.size(), 50u);
    EXPECT_EQ(std::ranges::count_if(all, &act::in_a_hurry), 1);
    EXPECT_EQ(std::ranges::count(all, "", &act::name), 3);
}

TEST(TableOfAGoodBase, IsRightForAProgramInLittleTime) {
    for (std::uint64_t seed = 0; seed < 50; ++seed) {
        station_driver driven(seed);
        for (const act& each : table_of_a_good_base())
            if (each.name.empty())
                driven.run_ms(each.value * 1000);
            else if (std::isupper(each.name[0])) {
                driven.set(each.name + "=" + std::to_string(each.value));
                driven.step(0.001);
            } else
                driven.wait(each.name, each.value);
        const workcell_state end = driven.model.state();
        EXPECT_EQ(end.good, 1) << seed;
        EXPECT_EQ(end.bad, 0) << seed;
        EXPECT_EQ(end.parts_left, 1) << seed;
        EXPECT_EQ(end.incidents, 0) << seed;
        EXPECT_EQ(driven.sensor("init"), 1) << seed;
        EXPECT_LT(end.time_s, 65) << seed;
    }
}

TEST(TableOfAGoodBase, MakesOneOfASingleBaseHoweverLateEveryCommand) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        slow_person person(seed, {.bases = 1});
        person.hurry_least_ms = 0;
        person.hurry_most_ms = 15'000;
        person.play(table_of_a_good_base());
        expect_counts(person, 1, 0, seed);
    }
}

TEST(TableOfAGoodBase, MakesOneAfterAnotherHoweverLateEveryCommandButOne) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        slow_person person(seed, {});
        for (int made = 1; made <= 3; ++made) {
            person.play(table_of_a_good_base());
            expect_counts(person, made, 0, seed);
        }
    }
}

TEST(TableOfAGoodBase, MakesOneOfTheFirstBaseWhenOthersComeBehindIt) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        slow_person person(seed, {});
        person.hurry_least_ms = 1800;
        person.hurry_most_ms = 15'000;
        person.play(table_of_a_good_base());
        const int bad = person.driven.model.state().bad;
        EXPECT_GE(bad, 1) << seed;
        EXPECT_LE(bad, 2) << seed;
        expect_counts(person, 1, bad, seed);
        person.hurry_most_ms = person.hurry_least_ms = 1000;
        person.play(table_of_a_good_base());
        expect_counts(person, 2, bad, seed);
    }
}

TEST(FirstSession, EndsWithAGluedBaseAtZoneTwoHoweverLateEveryClick) {
    const acts all = first_session();
    ASSERT_GT(all.size(), 20u);
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        slow_person person(seed, {.bases = bases_of_first_session()});
        person.play(all);
        const workcell_state end = person.driven.model.state();
        ASSERT_EQ(end.bases.size(), 1u) << seed;
        EXPECT_TRUE(end.bases[0].glued) << seed;
        EXPECT_EQ(person.driven.sensor("p2ok"), 1) << seed;
        expect_counts(person, 0, 0, seed);
    }
}

TEST(BadBase, IsOneThatMissesAnything) {
    const struct {
        const char* missing;
        bool glue, part;
        int press_ms;
    } cases[] = {{"glue", false, true, 10'000},
                 {"part", true, false, 10'000},
                 {"press", true, true, 0},
                 {"half a second of the press", true, true, 9'500},
                 {"everything", false, false, 0}};
    for (const auto& [missing, glue, part, press_ms] : cases) {
        station_driver driven;
        driven.bring_to_zone(3, glue, part);
        if (press_ms > 0) {
            driven.play({{"DESP=1", "pb=1"}});
            driven.run_ms(press_ms - 1);
        }
        driven.play({{"DESP=0 MONP=1", "ph=1"}, {"MONP=0 MT=1 BZ3=0", "p3ok=0"}});
        driven.run_ms(3800);
        EXPECT_EQ(driven.model.state().good, 0) << missing;
        EXPECT_EQ(driven.model.state().bad, 1) << missing;
        EXPECT_EQ(driven.model.state().parts_left, part) << missing;
    }
}

TEST(BadBase, IsOneThatWasNotGluedLongEnough) {
    station_driver driven;
    driven.bring_to_zone(1);
    driven.set("DEPOSE=1");
    driven.run_ms(999);
    driven.play({{"DEPOSE=0 MT=1 BZ1=0", "p2ok=1"}});
    EXPECT_FALSE(driven.model.state().bases[0].glued);
}

}  // namespace
