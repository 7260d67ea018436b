// Sessions of the ZK4 station with an exercise, played again and marked: the same verdict as live.
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "lesson/examiner.h"
#include "recording/hidden_faults.h"
#include "tests/lesson/marked_files.h"
#include "tests/recording/recorded_session.h"
#include "workcell/workcell_model.h"

namespace {

constexpr int steps = 800;

/// An exercise of things that random hands bring about now and then.
class zk4_exercise {
public:
    explicit zk4_exercise(std::uint32_t seed) : random_(seed) {
        task.title.french = "Au hasard";
        task.digest = std::string(64, '0');
        task.station.seed = seed;
        task.station.bases = static_cast<int>(below(5));
        task.station.parts = static_cast<int>(below(5));
        if (below(3) == 0) task.station.duration_ms = below(9000) + 1;
        for (auto left = below(4) + 1; left > 0; --left)
            task.goals.push_back({{}, conditions(), below(3) * 150, below(2500), 1 + below(3)});
        for (auto left = below(3); left > 0; --left) task.bans.push_back({{}, conditions(), 1});
        task.hints.push_back({{}, conditions(), 100});
        task.balances.push_back({{}, session_count::incidents, {}, below(3), 2});
        if (below(2) == 0) task.station.faults = {{"te", fault_kind::late}};
        if (below(2) == 0)
            task.station.hidden_faults = {{"b1e", fault_kind::flicker}, {"MTA", fault_kind::slow}};
    }
    void add_diagnosis() {
        if (below(2) == 0) task.diagnosis = exercise_diagnosis{{{"b1e", fault_kind::flicker}}, 3};
    }

    exercise task;

private:
    std::int64_t below(std::int64_t limit) {
        return static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(limit));
    }
    std::vector<exercise_condition> conditions() {
        static constexpr std::string_view inputs[] = {"init", "b1e", "te", "ts", "vh", "vb", "ph"};
        static constexpr std::string_view outputs[] = {"BZ1", "MTA", "MT", "DESV"};
        static const workcell_model model(0);
        if (below(4) == 0)
            return {{condition_place::desk, "atu", static_cast<std::int32_t>(below(2)), 2}};
        const bool input = below(2) == 0;
        const std::string_view name = input ? inputs[below(7)] : outputs[below(4)];
        return {{input ? condition_place::input : condition_place::output, std::string(name),
                 static_cast<std::int32_t>(below(2)),
                 index_of(input ? model.inputs() : model.outputs(), name)}};
    }

    std::mt19937 random_;
};

/// The same session each time, up to as many steps as are asked for.
struct examined_session {
    examined_session(const exercise& task, std::uint32_t seed, int most_steps)
        : examiner(task, language::french), random_(seed) {
        workcell_model model(task.station.seed, {task.station.bases, task.station.parts});
        station_run run(model);
        run.add_reader(kept);
        run.set_examiner(examiner);
        for (const station_fault& each : task.station.faults) EXPECT_TRUE(run.set_fault(each));
        run.begin("");
        note_size(kept.text.size());
        for (int i = 0; i < most_steps && !examiner.over(); ++i) step(run);
        run.finish(examiner.over() ? "exercice terminé" : "fin demandée");
    }

    /// How many steps are whole in a recording that was cut after so many bytes: those up to the
    /// last row, where it tells an answer and its step has no more of them, else those up to the
    /// step before.
    int whole_steps(std::size_t bytes) const {
        const auto cut = std::ranges::upper_bound(sizes_, bytes, {}, &size::all);
        const auto last = std::ranges::lower_bound(sizes_, std::prev(cut)->all, {}, &size::all);
        if (bytes == last->all)
            return static_cast<int>(last - sizes_.begin()) - (last->taken == bytes ? 1 : 0);
        const bool begun = cut == sizes_.end() || cut->answered > bytes || cut->taken == bytes;
        return static_cast<int>(cut - sizes_.begin()) - (begun ? 1 : 0);
    }
    /// Of the first block.
    std::size_t first_bytes() const { return sizes_.front().answered; }

    exercise_examiner examiner;
    csv_keeper kept;

private:
    /// The recording's bytes after a step: with what the station answered, and with what the
    /// exercise said behind it; and those before, with what the step took.
    struct size {
        std::size_t answered, all, taken;
    };

    void step(station_run& run) {
        if (random_() % 20 == 0)
            given_[random_() % given_.size()] = static_cast<std::int32_t>(random_() % 3);
        if (random_() % 150 == 0) run.set_desk({false, random_() % 2 == 0, random_() % 3 == 0});
        if (random_() % 60 == 0 && examiner.asks_for_faults())
            examiner.take_answer({{"b1e", fault_kind::flicker}, {"te", fault_kind::late}});
        if (random_() % 80 == 0 && examiner.asks_for_faults())
            examiner.take_answer({{"b1e", fault_kind::flicker}});
        const std::size_t before = kept.text.size();
        run.step([this](int output) { return given_[static_cast<std::size_t>(output)]; });
        note_size(before, run.ms());
    }
    void note_size(std::size_t before, std::int64_t ms = 0) {
        const std::string& text = kept.text;
        std::size_t answered = text.size();
        while (answered > before) {
            const std::size_t row = text.rfind('\n', answered - 2) + 1;
            if (text.substr(row, answered - row).find(",exercice,") == std::string::npos) break;
            answered = row;
        }
        // A step without answers adds nothing to the one before.
        if (answered == before && !sizes_.empty()) answered = sizes_.back().answered;
        sizes_.push_back({answered, text.size(), taken_bytes(before, ms)});
    }
    /// Up to the last row of what the step took; 0 where it took nothing new.
    std::size_t taken_bytes(std::size_t before, std::int64_t ms) const {
        const std::string& text = kept.text;
        std::size_t taken = before;
        while (taken < text.size() && std::stoll(text.substr(taken, 20)) < ms)
            taken = text.find('\n', taken) + 1;
        return taken == before ? 0 : taken;
    }

    std::mt19937 random_;
    std::array<std::int32_t, static_cast<std::size_t>(station_output::count)> given_ = {};
    std::vector<size> sizes_;
};

std::string text_of(const exercise_standing& standing) {
    std::string text = standing.passed ? "reussi " : "echoue ";
    text += std::to_string(standing.points) + "/" + std::to_string(standing.total) + " " +
            std::to_string(standing.over_ms.value_or(-1));
    for (const goal_standing& each : standing.goals)
        text += " " + std::to_string(each.reached_ms.value_or(-1));
    return text + " '" + standing.answer + "'";
}

TEST_F(Marking, TheVerdictIsThatOfTheLiveSession) {
    int passed = 0;
    for (std::uint32_t seed = 0; seed < 400; ++seed) {
        zk4_exercise made(seed);
        made.add_diagnosis();
        const examined_session session(made.task, seed, steps);
        const marked_recording found = marked(made.task, session.kept.text);
        ASSERT_TRUE(found.standing) << seed << ": " << found.refusal;
        ASSERT_EQ(text_of(*found.standing), text_of(session.examiner.progress()))
            << "seed " << seed;
        ASSERT_EQ(found.result(), session.examiner.passed() ? "reussi" : "echoue");
        passed += found.passed();
    }
    EXPECT_GT(passed, 20);
    EXPECT_LT(passed, 380);
}

TEST_F(Marking, ACutRecordingIsJudgedToItsLastWholeStep) {
    std::mt19937 random(1);
    for (std::uint32_t seed = 0; seed < 400; ++seed) {
        const zk4_exercise made(seed);
        const examined_session session(made.task, seed, steps);
        const std::string& whole = session.kept.text;
        const std::size_t fin = whole.rfind('\n', whole.size() - 2) + 1;
        if (fin <= session.first_bytes()) continue;
        const std::size_t cut =
            session.first_bytes() + random() % (fin - session.first_bytes()) + random() % 2;
        const std::string rest = whole.substr(0, cut);
        const int last = session.whole_steps(rest.rfind('\n') + 1);
        const examined_session until(made.task, seed, last);
        const marked_recording found = marked(made.task, rest);
        ASSERT_TRUE(found.standing) << seed << ": " << found.refusal;
        ASSERT_EQ(text_of(*found.standing), text_of(until.examiner.progress()))
            << "seed " << seed << ", cut behind " << cut;
    }
}

TEST_F(Marking, TheRecordingComesAgainByteForByteFromItsEndOrFromTheExercise) {
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        zk4_exercise made(seed);
        made.add_diagnosis();
        const examined_session session(made.task, seed, steps);
        std::stringbuf bytes(session.kept.text), ahead(session.kept.text);
        recording_reader recording("f", bytes), first("f", ahead);
        EXPECT_EQ(announced_hidden_faults(first.head()), made.task.station.hidden_faults.size());
        const std::vector<station_fault> told = told_hidden_faults(first);
        EXPECT_EQ(told, made.task.station.hidden_faults);
        const replayed result = replay_of(session.kept.text, told);
        ASSERT_EQ(result.complaint, "") << "seed " << seed;
        ASSERT_EQ(result.out, session.kept.text) << "seed " << seed;
    }
}

}  // namespace
