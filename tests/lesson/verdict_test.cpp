// What a verdict says, sentence by sentence, and as lines of the viewer.
#include "lesson/verdict.h"

#include <gtest/gtest.h>

#include <regex>

#include "tests/lesson/random_exercise.h"
#include "viewer/line_markup.h"

namespace {

using events = std::vector<station_event>;

constexpr int a = 0, b = 1;

station_event input(std::int64_t ms, int index, std::int64_t value) {
    return {ms, event_kind::input, small_inputs[static_cast<std::size_t>(index)], value, {}, index};
}
station_event count(std::int64_t ms, std::string_view name, std::int64_t value) {
    return {ms, event_kind::session, name, value, {}};
}
station_event answer(std::int64_t ms, std::string_view text) {
    return {ms, event_kind::exercise, "diagnostic", 0, text};
}
station_event fin(std::int64_t ms) { return {ms, event_kind::session, "fin", 0, "fin demandée"}; }

exercise_condition is(int index, std::int32_t value) {
    return {condition_place::input, std::string(small_inputs[static_cast<std::size_t>(index)]),
            value, index};
}

std::string told(const exercise& task, const events& happened, language in = language::french) {
    judge judge(task);
    judge.read(happened);
    std::string text;
    for (const verdict_sentence& each : verdict_sentences(task, judge.standing(), in))
        text += (each.failed ? "- " : "  ") + each.text + "\n";
    return text;
}

/// What stands between the title and the counts.
std::string body(const std::string& text) {
    const std::size_t begin = text.find('\n') + 1;
    return text.substr(begin, text.find("  À la fin : ") - begin);
}

TEST(Verdict, SaysOfEachGoalWhenItWasReachedOrWhatWasMissing) {
    exercise task;
    task.title.french = "Essai";
    task.goals.push_back({{"un", "one"}, {is(a, 1)}, 500, 2000, 2});
    task.goals.push_back({{"deux", ""}, {is(a, 0), is(b, 1)}, 0, {}, 1});
    const struct {
        events happened;
        std::string text;
    } rows[] = {
        {{fin(1000)},
         "- But 1, un : pas atteint ; à la fin, à 1.000 s, il manquait a=1 depuis 0.000 s.\n"
         "- But 2, deux : pas atteint ; à la fin, à 1.000 s, il manquait b=1 depuis 0.000 s.\n"},
        {{input(0, b, 1), fin(1000)},
         "- But 1, un : pas atteint ; à la fin, à 1.000 s, il manquait a=1 depuis 0.000 s.\n"
         "- But 2, deux : pas atteint ; à la fin, à 1.000 s, le but 1 manquait encore.\n"},
        {{input(600, a, 1), fin(1000)},
         "- But 1, un : pas atteint ; à la fin, à 1.000 s, tout y était, mais depuis 0.600 s "
         "seulement : il fallait 0.500 s.\n"
         "- But 2, deux : pas atteint ; à la fin, à 1.000 s, il manquait a=0 depuis 0.600 s, b=1 "
         "depuis 0.000 s.\n"},
        {{input(600, a, 1), input(2000, a, 0), input(2000, b, 1), fin(3000)},
         "  But 1, un : atteint à 1.100 s, 2 points.\n"
         "  But 2, deux : atteint à 2.000 s, 1 point.\n"},
        {{input(1510, a, 1), input(2000, a, 0), input(2010, a, 1), fin(3000)},
         "- But 1, un : atteint trop tard, à 2.510 s ; la limite était à 2.000 s.\n"
         "- But 2, deux : pas atteint ; à la fin, à 3.000 s, il manquait a=0 depuis 2.010 s, b=1 "
         "depuis 0.000 s.\n"},
    };
    for (const auto& [happened, text] : rows) EXPECT_EQ(body(told(task, happened)), text);
}

TEST(Verdict, SaysWhatMustNotHaveHappenedAndTheHints) {
    exercise task;
    task.goals.push_back({{"un", ""}, {is(b, 1)}, 0, {}, 2});
    task.bans.push_back({{"a monte", ""}, {is(a, 1)}, 3});
    task.bans.push_back({{"les deux", ""}, {is(a, 1), is(b, 1)}, 0});
    task.hints.push_back({{"a est resté", ""}, {is(a, 1)}, 200});
    EXPECT_EQ(body(told(task, {input(100, a, 1), input(310, a, 0), input(500, b, 1), fin(900)})),
              "  But 1, un : atteint à 0.500 s, 2 points.\n"
              "- Jamais 1, a monte : c'est arrivé à 0.100 s, moins 3 points.\n"
              "  Jamais 2, les deux : ce n'est pas arrivé.\n"
              "  Indice, à 0.300 s : a est resté.\n");
    EXPECT_EQ(body(told(task, {input(100, a, 1), input(120, b, 1), fin(900)})),
              "  But 1, un : atteint à 0.120 s, 2 points.\n"
              "- Jamais 1, a monte : c'est arrivé à 0.100 s, moins 3 points.\n"
              "- Jamais 2, les deux : c'est arrivé à 0.120 s.\n");
}

/// A count and a diagnosis.
exercise search_task() {
    exercise task;
    task.title = {"Trouver", "Find"};
    task.station.hidden_faults = {{"b", fault_kind::late}, {"X", fault_kind::dead}};
    task.diagnosis = exercise_diagnosis{task.station.hidden_faults, 5};
    task.balances.push_back({{"des bonnes", "good ones"}, session_count::good, 1, 2, 1});
    return task;
}

TEST(Verdict, EndsWithCountsFaultsPointsAndTheResult) {
    const exercise task = search_task();
    const struct {
        events happened;
        language in;
        std::string text;
    } rows[] = {
        {{fin(900)},
         language::french,
         "  Exercice : Trouver\n"
         "  À la fin : bonnes=0 mauvaises=0 incidents=0.\n"
         "- Bilan 1, des bonnes : à la fin, à 0.900 s, bonnes=0 ; il fallait au moins 1 et au plus "
         "2.\n"
         "  Pannes cachées : b=late X=dead.\n"
         "- Diagnostic : pas de réponse jusqu'à la fin, à 0.900 s ; il fallait b=late X=dead.\n"
         "  Points : 0 sur 6.\n"
         "- Exercice non réussi, terminé à 0.900 s.\n"},
        {{count(100, "incidents", 2), count(200, "bonnes", 1), answer(500, "X=dead b=late"),
          fin(900)},
         language::french,
         "  Exercice : Trouver\n"
         "  À la fin : bonnes=1 mauvaises=0 incidents=2.\n"
         "  Bilan 1, des bonnes : bonnes=1, 1 point.\n"
         "  Pannes cachées : b=late X=dead.\n"
         "  Diagnostic : X=dead b=late, juste, répondu à 0.500 s, 5 points.\n"
         "  Points : 6 sur 6.\n"
         "  Exercice réussi à 0.500 s.\n"},
        {{answer(500, "X=dead"), count(600, "bonnes", 1), fin(900)},
         language::english,
         "  Exercise: Find\n"
         "  At the end: good=1 bad=0 incidents=0.\n"
         "  Count 1, good ones: good=1, 1 point.\n"
         "  Hidden faults: b=late X=dead.\n"
         "- Diagnosis: X=dead, wrong, answered at 0.500 s; right is b=late X=dead.\n"
         "  Points: 1 of 6.\n"
         "- Exercise not passed, over at 0.600 s.\n"},
    };
    for (const auto& [happened, in, text] : rows) EXPECT_EQ(told(task, happened, in), text);
}

TEST(Verdict, EveryLineOfAFailureNamesItsMoment) {
    const std::regex moment("[0-9]+\\.[0-9]{3} s");
    for (std::uint32_t seed = 0; seed < 1000; ++seed) {
        random_lesson random(seed);
        const exercise task = random.task();
        const history looks = random.looks();
        judge judge(task);
        for (const auto& each : events_of(looks)) judge.read(each);
        bool failed = false;
        for (const language in : {language::french, language::english})
            for (const auto& each : verdict_sentences(task, judge.standing(), in)) {
                failed = failed || each.failed;
                ASSERT_EQ(each.text.find_first_of("{}\n"), std::string::npos) << each.text;
                ASSERT_TRUE(!each.failed || std::regex_search(each.text, moment)) << each.text;
            }
        ASSERT_NE(failed, judge.standing().passed) << "seed " << seed;
    }
}

TEST(Verdict, ItsLinesAreMarkupThatLosesNothing) {
    exercise task;
    task.title.french = "Le poste #7, é" + std::string(150, 'x') + " et la suite";
    task.goals.push_back({{"un\nsaut", ""}, {is(a, 1)}, 0, {}, 2});
    judge judge(task);
    judge.read(events{fin(900)});
    const auto lines = verdict_lines(task, judge.standing(), language::french, "poste 7");
    ASSERT_EQ(lines.front(), "#C T102 T ");
    EXPECT_EQ(lines[1], "#T");
    EXPECT_EQ(lines[2], " poste 7");
    EXPECT_EQ(lines.back(), "#T");
    std::string text;
    for (const std::string& each : lines) {
        if (line_markup::type_of(each) != 0) continue;
        EXPECT_EQ(each.find('#'), std::string::npos) << each;
        EXPECT_LE(each.size(), 103U) << each;
        text += each + "\n";
    }
    EXPECT_EQ(text.find("#"), std::string::npos);
    EXPECT_NE(text.find(" Exercice : Le poste *7,\n é" + std::string(98, 'x')), std::string::npos)
        << text;
    EXPECT_NE(text.find("But 1, un\\x0Asaut : pas atteint"), std::string::npos) << text;
}

TEST(Verdict, LinesBreakAtBlanksAndNeverWithinACharacter) {
    const struct {
        std::string text;
        std::size_t width;
        std::vector<std::string> lines;
    } rows[] = {
        {"", 5, {}},
        {"abc", 5, {" abc"}},
        {"abcde", 5, {" abcde"}},
        {"abcdef", 5, {" abcde", " f"}},
        {"abc def", 5, {" abc", " def"}},
        {"abcde fg", 5, {" abcde", " fg"}},
        {"ab cd ef", 5, {" ab cd", " ef"}},
        {"ééééééé", 5, {" ééééé", " éé"}},
        {"a#b", 5, {" a*b"}},
        {" a", 5, {"  a"}},
    };
    for (const auto& [text, width, lines] : rows)
        EXPECT_EQ(markup_lines(text, width), lines) << text;
}

}  // namespace
