// What can be asked of a session through its control socket, and what it answers.
#include <gtest/gtest.h>

#include "session/control_requests.h"
#include "session/end_signals.h"
#include "tests/session/recorded_run.h"
#include "tests/support/programs.h"

namespace {

struct asked_session : recorded_run {
    explicit asked_session(bool paused = false)
        : time(1, paused, std::chrono::steady_clock::now()), requests(run, time, options) {
        run.begin("");
    }

    /// "0" and what is printed, as the socket sends it; "later" for an answer that waits.
    std::string ask(const std::string& request, bool over = false) {
        const std::optional<control_answer> given = requests.carry_out(request, over);
        if (!given) return "later";
        return std::to_string(static_cast<int>(given->status)) + "\n" + given->text;
    }
    /// The status of the answer, which has one line exactly where it is not 0.
    int status_of(const std::string& request, bool over = false) {
        const std::string answer = ask(request, over);
        const auto lines = std::ranges::count(answer, '\n') - 1;
        EXPECT_EQ(lines, answer[0] == '0' ? 0 : 1) << request << answer;
        return answer[0] - '0';
    }

    session_options options;
    step_clock time;
    control_requests requests;
};

TEST(ControlRequests, StatusTellsTheSession) {
    asked_session test;
    const std::string end = "exercice=\nbut=\npoints=\n";
    EXPECT_EQ(test.ask("status"),
              "0\nstation=essai\ntitre=\nsecondes=0.000\netat=marche\nvitesse=1\nbonnes=0\n"
              "mauvaises=0\nincidents=0\ndernier_incident=\npannes=\n" +
                  end);
    test.options.title = "poste 7";
    test.model.happens = [](fake_station& model) {
        model.made = {2, 3};
        if (model.wrong.empty()) model.wrong = {{3, "choc"}, {7, "fuite : rien"}};
    };
    for (int i = 0; i < 123; ++i) test.step();
    for (const char* const each : {"fault C1=dead", "fault s2=stuck1", "pause", "speed 0.5"})
        EXPECT_EQ(test.ask(each), "0\n");
    EXPECT_EQ(test.ask("status"),
              "0\nstation=essai\ntitre=poste 7\nsecondes=1.230\netat=pause\nvitesse=0.5\n"
              "bonnes=2\nmauvaises=3\nincidents=246\ndernier_incident=fuite : rien\n"
              "pannes=s2=stuck1 C1=dead\n" +
                  end);
}

// clang-format off
constexpr struct {
    const char* request;
    int status;
} refusals[] = {
    {"unknown", 2}, {"Status", 2}, {"statu", 2}, {"status x", 2}, {"desk", 2}, {"desk atu", 2},
    {"desk atu=2", 1}, {"desk atu=", 1}, {"desk atu=01", 1}, {"desk atu=on", 1},
    {"desk ATU=1", 1}, {"desk init=1", 1}, {"desk =1", 1}, {"desk dc=1 x=1", 1},
    {"desk dc=1 ac", 2}, {"desk dc=1 ac=7", 1}, {"fault", 2}, {"fault s1", 2},
    {"fault s1=dead", 1}, {"fault C1=stuck0", 1}, {"fault s1=broken", 1},
    {"fault C1=slow", 1}, {"fault s1=slow", 1}, {"fault C1=late", 1}, {"fault none=stuck0", 1}, {"fault none=", 1}, {"fault =", 1}, {"fault =stuck0", 1},
    {"fault s1=stuck0 s2=stuck0", 2}, {"fault S1=stuck0", 1}, {"diagnose", 2},
    {"diagnose s1=stuck0", 1}, {"diagnose s1", 2}, {"diagnose s1=stuck0 s2", 2},
    {"pause now", 2}, {"resume now", 2}, {"end now", 2}, {"speed", 2}, {"speed fast", 2},
    {"speed 0.09", 2}, {"speed 100.1", 2}, {"speed 0,5", 2}, {"speed nan", 2}, {"speed 1 2", 2},
    {"step", 2}, {"step 0", 2}, {"step -1", 2}, {"step 0.001", 2}, {"step 0.015", 2},
    {"step 0.01000001", 2}, {"step 1.0000000001", 2}, {"step 1000000.01", 2}, {"step 1e7", 2},
    {"step inf", 2}, {"step 1s", 2}, {"step 1 1", 2}, {"step 1", 1}};
// clang-format on

TEST(ControlRequests, EveryRefusalHasItsStatusAndOneLineAndChangesNothing) {
    asked_session test;
    const std::string before = test.ask("status");
    for (const auto& [request, status] : refusals)
        EXPECT_EQ(test.status_of(request), status) << request;
    EXPECT_EQ(test.ask("status"), before);
    EXPECT_EQ(test.run.desk(), station_desk());
    EXPECT_FALSE(end_signals::asked());
}

TEST(ControlRequests, TheDeskTakesAllItsWordsAtOnceAndKeepsTheOthers) {
    asked_session test;
    EXPECT_EQ(test.ask("desk dc=1 atu=1"), "0\n");
    EXPECT_EQ(test.run.desk(), (station_desk{.dc = true, .atu = true}));
    EXPECT_EQ(test.ask("desk ac=1 dc=0"), "0\n");
    EXPECT_EQ(test.run.desk(), (station_desk{.ac = true, .atu = true}));
    EXPECT_EQ(test.ask("desk ac=0 ac=1 ac=0"), "0\n") << "the last one counts";
    EXPECT_EQ(test.run.desk(), station_desk{.atu = true});
}

TEST(ControlRequests, AFaultIsSetReplacedAndEndedAlsoWhenThereIsNone) {
    asked_session test;
    EXPECT_EQ(test.ask("fault s1=stuck0"), "0\n");
    EXPECT_EQ(test.ask("fault s1=inverted"), "0\n");
    EXPECT_EQ(test.run.faults(), std::vector<station_fault>({{"s1", fault_kind::inverted}}));
    EXPECT_EQ(test.ask("fault s1="), "0\n");
    EXPECT_TRUE(test.run.faults().empty());
    EXPECT_EQ(test.ask("fault s1="), "0\n");
    EXPECT_EQ(test.ask("fault C2="), "0\n");
}

TEST(ControlRequests, PauseAndResumeAlsoTwiceOver) {
    asked_session test;
    for (const char* const each : {"pause", "pause"}) {
        EXPECT_EQ(test.ask(each), "0\n");
        EXPECT_TRUE(test.time.paused());
    }
    for (const char* const each : {"resume", "resume"}) {
        EXPECT_EQ(test.ask(each), "0\n");
        EXPECT_FALSE(test.time.paused());
    }
}

TEST(ControlRequests, TheSpeedFromATenthToAHundred) {
    asked_session test;
    const struct {
        const char *given, *told;
    } rows[] = {{"0.1", "0.1"}, {"100", "100"}, {"1", "1"}, {"2.50", "2.5"}, {"1e1", "10"}};
    for (const auto& [given, told] : rows) {
        EXPECT_EQ(test.ask(std::string("speed ") + given), "0\n");
        EXPECT_NE(test.ask("status").find(std::string("\nvitesse=") + told + "\n"),
                  std::string::npos);
    }
}

TEST(ControlRequests, StepsInAPauseAreAskedForAndAnsweredLater) {
    const struct {
        const char* seconds;
        long long steps;
    } rows[] = {{"0.01", 1},
                {"0.29", 29},
                {"1", 100},
                {"1.15", 115},
                {"8.2", 820},
                {"1e3", 100'000},
                {"999999.99", 99'999'999},
                {"1e6", 100'000'000}};
    for (const auto& [seconds, steps] : rows) {
        asked_session test(true);
        EXPECT_EQ(test.ask(std::string("step ") + seconds), "later");
        EXPECT_EQ(test.time.steps_left(), steps) << seconds;
        EXPECT_EQ(test.status_of("step 0.01"), 1) << "one at a time";
        EXPECT_EQ(test.time.steps_left(), steps);
    }
}

TEST(ControlRequests, EveryHundredthIsAWholeNumberOfSteps) {
    for (int steps = 1; steps <= 20'000; ++steps) {
        asked_session test(true);
        const std::string hundredths = std::to_string(100 + steps % 100).substr(1);
        const std::string seconds = std::to_string(steps / 100) + "." + hundredths;
        ASSERT_EQ(test.ask("step " + seconds), "later") << seconds;
        ASSERT_EQ(test.time.steps_left(), steps);
    }
}

TEST(ControlRequests, OnceTheSessionIsOverOnlyItsStatusIsTold) {
    asked_session test;
    EXPECT_NE(test.ask("status", true).find("\netat=fin\n"), std::string::npos);
    for (const char* const each : {"desk atu=1", "fault s1=stuck0", "pause", "resume", "speed 2",
                                   "step 1", "end", "diagnose s1=stuck0"})
        EXPECT_EQ(test.status_of(each, true), 4) << each;
    EXPECT_EQ(test.run.desk(), station_desk());
    EXPECT_EQ(test.status_of("unknown", true), 2);
}

TEST(ControlRequests, TheEndIsAskedForAsByASignal) {
    const outcome end = run_in_child([] {
        asked_session test;
        end_signals::watch();
        const bool said = test.ask("end") == "0\n";
        _exit(said && end_signals::asked() ? 0 : 1);
    });
    EXPECT_EQ(end.status, 0);
}

}  // namespace
