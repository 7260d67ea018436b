// What holds for every history of a station: it can be replayed from its rows, and every reader is
// told the whole of it.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>

#include "tests/session/recorded_run.h"

namespace {

/// Whatever its commands and its desk are, its sensors, counts and incidents depend on all of them.
void behave(fake_station& model) {
    static constexpr std::string_view troubles[] = {"choc", "fuite, grave", "dit \"non\""};
    std::uint64_t mixed = model.stepped_s.size() / 3;
    for (const std::int32_t each : model.commands)
        mixed = mixed * 1'000'003 + static_cast<std::uint32_t>(each);
    mixed =
        mixed * 8 + (model.desk.dc ? 4 : 0) + (model.desk.ac ? 2 : 0) + (model.desk.atu ? 1 : 0);
    mixed = std::mt19937_64(mixed)();
    for (std::size_t i = 0; i < 3; ++i) model.sensors[i] = static_cast<int>(mixed >> i & 1);
    const auto end_ms = static_cast<std::int64_t>(10 * model.stepped_s.size());
    if (mixed % 7 == 0) model.wrong.push_back({end_ms - 4, troubles[mixed % 3]});
    if (mixed % 5 == 0) model.wrong.push_back({end_ms, troubles[mixed / 3 % 3]});
    model.made.good += mixed % 11 == 0;
    model.made.bad += mixed % 13 == 0;
}

constexpr const char* things[] = {"s1", "s2", "s3", "C1", "C2"};

void change_a_fault(station_run& run, std::uint32_t choice) {
    const char* const name = things[choice % 5];
    if (choice / 5 % 3 == 0)
        EXPECT_TRUE(run.end_fault(name));
    else if (*name == 'C')
        EXPECT_TRUE(run.set_fault({name, fault_kind::dead}));
    else
        EXPECT_TRUE(run.set_fault({name, static_cast<fault_kind>(choice / 15 % 5)}));
}

/// Changes some of what the next step takes, sometimes several times over.
void change_something(recorded_run& test, std::mt19937& random) {
    constexpr std::int32_t values[] = {0, 1, -1, 2, INT32_MIN, INT32_MAX};
    if (random() % 3 == 0) test.given[random() % 2] = values[random() % 6];
    if (random() % 5 == 0)
        test.run.set_desk({random() % 2 == 0, random() % 2 == 0, random() % 2 == 0});
    for (auto changes = random() % 5; changes > 2; --changes) change_a_fault(test.run, random());
}

struct cause {
    std::string kind, name, value;
};

fault_kind kind_called(const std::string& word) {
    int kind = 0;
    while (fault_kind_word(static_cast<fault_kind>(kind)) != word) ++kind;
    return static_cast<fault_kind>(kind);
}

void apply(recorded_run& test, const cause& each) {
    if (each.kind == "sortie") {
        test.given[each.name == "C2"] = std::stoi(each.value);
    } else if (each.kind == "pupitre") {
        station_desk desk = test.run.desk();
        (each.name == "dc" ? desk.dc : each.name == "ac" ? desk.ac : desk.atu) = each.value == "1";
        test.run.set_desk(desk);
    } else if (each.value.empty()) {
        EXPECT_TRUE(test.run.end_fault(each.name));
    } else {
        EXPECT_TRUE(test.run.set_fault({each.name, kind_called(each.value)}));
    }
}

/// The causes that rows tell, by their times; under -1 the faults from before the first step.
std::map<std::int64_t, std::vector<cause>> causes_in(const std::string& rows) {
    std::map<std::int64_t, std::vector<cause>> causes;
    std::istringstream lines(rows);
    bool begun = false;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string ms, kind, name, value;
        std::getline(std::getline(std::getline(fields, ms, ','), kind, ','), name, ',');
        std::getline(fields, value);
        begun = begun || kind == "entree";
        if (kind == "sortie" || kind == "pupitre" || kind == "panne")
            causes[begun ? std::stoll(ms) : -1].push_back({kind, name, value});
    }
    return causes;
}

std::string replayed(const std::string& rows, int steps) {
    recorded_run test;
    test.model.happens = behave;
    auto causes = causes_in(rows);
    for (const cause& each : causes[-1]) apply(test, each);
    test.run.begin("loi");
    for (int i = 0; i < steps; ++i) {
        for (const cause& each : causes[10 * i]) apply(test, each);
        test.step();
    }
    test.run.finish("fin demandée");
    return test.kept.rows();
}

TEST(StationRunLaws, TheRowsOfItsCausesGiveTheSameRowsAgain) {
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        recorded_run test;
        test.model.happens = behave;
        while (random() % 4) change_a_fault(test.run, random());
        test.run.begin("loi");
        constexpr int steps = 60;
        for (int i = 0; i < steps; ++i) {
            change_something(test, random);
            test.step();
        }
        test.run.finish("fin demandée");
        ASSERT_EQ(replayed(test.kept.rows(), steps), test.kept.rows()) << "seed " << seed;
    }
}

TEST(StationRunLaws, TimesNeverFallAndNoRowRepeatsAValue) {
    std::mt19937 random(29);
    recorded_run test;
    test.model.happens = behave;
    test.run.begin("");
    for (int i = 0; i < 5000; ++i) {
        change_something(test, random);
        test.step();
    }
    std::istringstream lines(test.kept.rows());
    std::map<std::string, std::string> last;
    std::int64_t before_ms = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::int64_t ms = std::stoll(line);
        EXPECT_GE(ms, before_ms) << line;
        before_ms = ms;
        const std::size_t thing = line.find(',') + 1;
        const std::size_t value = line.find(',', line.find(',', thing) + 1) + 1;
        std::string& known = last[line.substr(thing, value - thing)];
        const bool no_fault_yet = line.find(",panne,") != std::string::npos && known.empty();
        EXPECT_TRUE(no_fault_yet || known != line.substr(value)) << line;
        known = line.substr(value);
    }
}

/// Notes under its name who reads what.
struct noting_reader : event_reader {
    noting_reader(std::string who, std::string& notes) : who(std::move(who)), notes(notes) {}
    void read(std::span<const station_event> events) override {
        for (const station_event& each : events) notes += who + csv_line(row_of_event(each));
    }
    std::string who;
    std::string& notes;
};

TEST(StationRunLaws, EveryReaderIsHandedEveryStepInTheOrderOfTheReaders) {
    std::string notes;
    noting_reader first("1:", notes), second("2:", notes);
    recorded_run test;
    test.run.add_reader(first);
    test.run.add_reader(second);
    test.model.happens = behave;
    test.run.begin("loi");
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        notes.clear();
        test.new_rows();
        change_something(test, random);
        test.step();
        std::string expected;
        const std::string rows = test.new_rows();
        for (const std::string who : {"1:", "2:"}) {
            std::istringstream lines(rows);
            for (std::string line; std::getline(lines, line);) expected += who + line + "\n";
        }
        EXPECT_EQ(notes, expected);
    }
}

}  // namespace
