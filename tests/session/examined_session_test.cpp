// What can be asked of a session that has a task, and what it answers.
#include <gtest/gtest.h>

#include "session/control_requests.h"
#include "tests/session/recorded_run.h"

namespace {

/// An examiner that asks for faults, or does not, and keeps the answers.
struct fake_examiner : session_examiner {
    std::span<const station_event> introduce() override { return {}; }
    std::span<const station_event> examine(std::int64_t ms,
                                           std::span<const station_event> happened) override {
        looks_ms.push_back(ms);
        seen += happened.size();
        return {};
    }
    std::span<const station_event> conclude(std::int64_t) override { return {}; }
    std::vector<station_fault> hidden_faults() const override {
        return {{"s1", fault_kind::stuck1}, {"C2", fault_kind::dead}};
    }
    bool over() const override { return false; }
    bool asks_for_faults() const override { return asks; }
    void take_answer(const std::vector<station_fault>& faults) override {
        answers.push_back(faults);
    }
    status standing() const override { return {"Un\ntitre", "2", "3/9"}; }
    bool passed() const override { return false; }
    std::vector<std::string> verdict() const override { return {}; }

    bool asks = true;
    std::vector<std::int64_t> looks_ms;
    std::size_t seen = 0;
    std::vector<std::vector<station_fault>> answers;
};

struct examined : recorded_run {
    explicit examined(bool asks = true)
        : time(1, false, std::chrono::steady_clock::now()), requests(run, time, options) {
        examiner.asks = asks;
        run.set_examiner(examiner);
        requests.set_examiner(examiner);
        EXPECT_TRUE(run.set_fault({"s2", fault_kind::late}));
        run.begin("");
    }
    std::string ask(const std::string& request, bool over = false) {
        const auto given = requests.carry_out(request, over);
        return given ? std::to_string(static_cast<int>(given->status)) + " " + given->text
                     : "later";
    }

    fake_examiner examiner;
    session_options options;
    step_clock time;
    control_requests requests;
};

TEST(ExaminedSession, StatusTellsTheTaskAndKnownFaultsAlone) {
    examined test;
    test.step();
    const std::string status = test.ask("status");
    EXPECT_TRUE(status.ends_with("\npannes=s2=late\nexercice=Un\\x0Atitre\nbut=2\npoints=3/9\n"))
        << status;
    EXPECT_EQ(test.run.model().sensor(0), 1) << "the hidden fault is there";
}

TEST(ExaminedSession, AnswersAndFaultsAreJudgedByTheirWords) {
    const struct {
        std::string request;
        bool asks;
        std::string answer;
    } rows[] = {
        {"diagnose s1=stuck1", true, "0 "},
        {"diagnose s1=stuck1 C2=dead", true, "0 "},
        {"diagnose s1", true, "2 s1: NOM=PANNE est attendu\n"},
        {"diagnose s1=stuck1 C2", false, "2 C2: NOM=PANNE est attendu\n"},
        {"diagnose", true, "2 demande incomprise: diagnose\n"},
        {"diagnose s1=stuck1", false, "1 cet exercice ne demande pas de diagnostic\n"},
        {"diagnose s9=stuck1", true,
         "1 s9=stuck1: la station n'a ni capteur ni actionneur nommé \"s9\"\n"},
        {"diagnose s1=stuck1 C2=late", true,
         "1 C2=late: C2 est un actionneur : sa seule panne est dead\n"},
        {"diagnose s1=", true,
         "1 s1=: s1 est un capteur : ses pannes sont stuck0, stuck1, inverted, late, flicker\n"},
        {"fault s2=stuck0", true, "1 un exercice est en cours: ses pannes ne changent pas\n"},
        {"fault s2=", true, "1 un exercice est en cours: ses pannes ne changent pas\n"},
        {"fault s2", true, "2 s2: NOM=PANNE ou NOM= est attendu\n"},
        {"desk dc=1", true, "0 "},
    };
    for (const auto& [request, asks, answer] : rows) {
        examined test(asks);
        EXPECT_EQ(test.ask(request), answer) << request;
        EXPECT_EQ(test.examiner.answers.size(),
                  request.starts_with("diagnose") && answer == "0 " ? 1U : 0U);
        EXPECT_EQ(test.ask(request, true), request == "diagnose" || request == "fault"
                                               ? answer
                                               : "4 la session est terminée\n")
            << request;
        test.step();
        EXPECT_EQ(test.run.faults().size(), 1U) << request;
    }
}

TEST(ExaminedSession, IsLookedAtAfterTheFirstBlockAndEachStep) {
    examined test;
    EXPECT_EQ(test.examiner.looks_ms, std::vector<std::int64_t>{0});
    EXPECT_EQ(test.examiner.seen, 11U);
    test.step();
    test.step();
    EXPECT_EQ(test.examiner.looks_ms, (std::vector<std::int64_t>{0, 10, 20}));
}

}  // namespace
