// quorin-io record: odd links, busy links, other people's stations, and the replay of its files.
#include <signal.h>

#include <thread>

#include "tests/end_to_end/quorin_io_record.h"
#include "tests/support/station.h"

namespace {

class QuorinIoRecordLaws : public testing::Test {
protected:
    /// Records a server's link from before `work` until its session is over: what it said.
    outcome record(test_server& server, const std::string& file,
                   const std::function<void()>& work) {
        program recording(
            {built("quorin-io"), std::to_string(server->memory_ident()), "record", file});
        EXPECT_TRUE(wait_until([&] { return !bytes_of(file).empty(); })) << recording.err();
        work();
        server->sharing_terminate();
        const int status = recording.wait().value_or(-1);
        return {status, recording.out(), recording.err()};
    }

    const runtime_folder control;
    const temporary_folder files;
    const std::string csv = files / "r.csv", vcd = files / "r.vcd", again = files / "again.csv";

private:
    leaves_nothing nothing_;
};

// Publishes `count` times, a pause between: every input has the number of the publication.
void publish_numbers(test_server& server, int count, std::chrono::microseconds pause) {
    for (int number = 1; number <= count; ++number, std::this_thread::sleep_for(pause)) {
        for (int i = 0; i < server->segment->nb_inputs; ++i) server->setreset_input(i, number);
        server->inputs_go();
    }
}

std::list<std::string> numbered_names(int count) {
    std::list<std::string> names;
    for (int i = 0; i < count; ++i) names.push_back("i" + std::to_string(i));
    return names;
}

/// The number that every input has at each time of a recording, one after another; -1 where they
/// differ.
std::vector<std::int64_t> numbers_of(const std::string& file) {
    std::map<std::string, std::int64_t> values;
    std::vector<std::int64_t> numbers;
    std::int64_t ms = 0;
    const auto close = [&] {
        const auto differs = [&](const auto& each) {
            return each.second != values.begin()->second;
        };
        numbers.push_back(std::ranges::any_of(values, differs) ? -1 : values.begin()->second);
    };
    for (const recorded_event& each : events_of(file)) {
        if (each.ms != ms) close();
        ms = each.ms;
        if (each.kind == event_kind::input) values[each.name] = each.value;
    }
    close();
    return numbers;
}

TEST_F(QuorinIoRecordLaws, NoTimeMixesTwoPublications) {
    constexpr int count = 400;
    test_server server(numbered_names(41), {});
    const outcome end =
        record(server, csv, [&] { publish_numbers(server, count, std::chrono::milliseconds(5)); });
    EXPECT_EQ(end.status, 0);
    const std::vector<std::int64_t> numbers = numbers_of(csv);
    EXPECT_EQ(std::ranges::count(numbers, -1), 0) << testing::PrintToString(numbers);
    EXPECT_TRUE(std::ranges::is_sorted(numbers));
    EXPECT_EQ(numbers.back(), count);
}

// However many publications there are, the last one is there, and those that were missed are told.
TEST_F(QuorinIoRecordLaws, AStormLosesNoLastStateAndIsTold) {
    constexpr int count = 5000;
    test_server server(numbered_names(41), numbered_names(41));
    const outcome end = record(
        server, csv, [&] { publish_numbers(server, count, std::chrono::microseconds(900)); });
    EXPECT_EQ(end.status, 0);
    const std::vector<std::int64_t> numbers = numbers_of(csv);
    EXPECT_EQ(numbers.back(), count);
    std::smatch told;
    ASSERT_TRUE(std::regex_match(end.err, told,
                                 std::regex("quorin-io: publications passées entre deux regards: "
                                            "([0-9]+)\n")))
        << end.err;
    // The first number is 0, the state before; the last look before the end may see no publication.
    const auto seen = static_cast<int>(numbers.size()) - 1;
    EXPECT_GE(std::stoi(told[1]), count / 10);
    EXPECT_LE(std::stoi(told[1]) + seen, count + 1);
}

TEST_F(QuorinIoRecordLaws, AClockThatJumpsIsNoPublicationStorm) {
    test_server server({"te"}, {"RENT"});
    const outcome end = record(server, csv, [&] {
        for (const std::int64_t clock :
             {INT64_MAX, std::int64_t{5}, INT64_MAX, std::int64_t{0}, INT64_MAX}) {
            server->segment->inputs_clock = clock;
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
        }
    });
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err, "quorin-io: publications passées entre deux regards: 9223372036854775807\n");
}

TEST_F(QuorinIoRecordLaws, OddNamesAreKeptOrEscaped) {
    test_server server({"a,b", "say \"te\"", "a b", "\x01\x7F\n", "\xFF\xC3", "é", "", "a b"},
                       {"$end", "#0", "a,b"});
    const outcome end = record(server, csv, [&] {
        server->setreset_input(7, 1);
        server->inputs_go();
    });
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(timeless(bytes_of(csv)),
              "ms,genre,nom,valeur\n0,session,format,1\n0,session,station,inconnue\n"
              "0,entree,\"a,b\",0\n0,entree,\"say \"\"te\"\"\",0\n0,entree,\\x01\\x7F\\x0A,0\n"
              "0,entree,\\xFF\\xC3,0\n0,entree,é,0\n0,entree,,0\n0,entree,a b,0\n"
              "0,sortie,$end,0\n0,sortie,#0,0\n0,sortie,\"a,b\",0\n"
              "T,entree,a b,1\nT,session,fin,session terminée\n");
    EXPECT_EQ(events_of(csv).size(), 14u);
}

TEST_F(QuorinIoRecordLaws, ALinkWithoutInputsOrOutputsIsRecorded) {
    const struct {
        std::list<std::string> inputs, outputs;
    } rows[] = {{{}, {}}, {{"te"}, {}}, {{}, {"RENT"}}};
    for (const auto& [inputs, outputs] : rows) {
        SCOPED_TRACE(testing::PrintToString(inputs) + testing::PrintToString(outputs));
        std::filesystem::remove(csv);
        test_server server(inputs, outputs);
        EXPECT_EQ(record(server, csv, [] {}).status, 0);
        EXPECT_EQ(events_of(csv).size(), 3 + inputs.size() + outputs.size());
        EXPECT_EQ(
            run_program({built("zk4sim"), "--play", csv, "--headless", "--csv", again}).status, 0);
        EXPECT_EQ(bytes_of(again), bytes_of(csv));
    }
}

TEST_F(QuorinIoRecordLaws, AReplayWithoutALinkGivesTheSameFile) {
    test_server server({"te", "a,b", "te", "\n"}, {"RENT", "te"});
    record(server, csv, [&] {
        server->segment->output_values[0] = 3;
        publish_numbers(server, 50, std::chrono::milliseconds(7));
    });
    const outcome played =
        run_program({built("zk4sim"), "--play", csv, "--headless", "--csv", again});
    EXPECT_EQ(played.status, 0) << played.err;
    EXPECT_EQ(bytes_of(again), bytes_of(csv));
    EXPECT_GT(events_of(csv).size(), 50u);
}

// A replay's step k covers the 10 ms up to 10 k.
TEST_F(QuorinIoRecordLaws, AReplayOnALinkShowsItsInputsAtTheirTimes) {
    test_server server({"te", "ts"}, {"RENT"});
    server->segment->input_values[1] = 4;
    record(server, csv, [&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        server->setreset_input(0, -7);
        server->inputs_go();
        ASSERT_TRUE(wait_until([&] { return bytes_of(csv).ends_with("te,-7\n"); }));
    });
    const std::int64_t steps = (events_of(csv, "te").at(1).ms + 9) / 10;
    ASSERT_GT(steps, 29);
    const station played({"--play", csv, "--no-panel", "--paused", "--speed", "1"});
    const auto step = [&](std::int64_t count) {
        const std::string hundredths = std::to_string(count % 100 + 100).substr(1);
        return played.io({"step", std::to_string(count / 100) + "." + hundredths});
    };
    EXPECT_EQ(played.io({"list"}).out, "entree\tte\t0\nentree\tts\t4\nsortie\tRENT\t0\n");
    EXPECT_EQ(step(steps - 1).status, 0);
    EXPECT_EQ(played.value("te"), "0");
    EXPECT_EQ(step(1).status, 0);
    EXPECT_EQ(played.value("te"), "-7");
    EXPECT_EQ(played.value("ts"), "4");
    EXPECT_EQ(played.io({"end"}).status, 0);
    EXPECT_EQ(played.process->wait(), 0) << played.process->err();
}

TEST_F(QuorinIoRecordLaws, RecordsOtherPeoplesStations) {
    const struct {
        std::string program, command, sensor;
    } rows[] = {{"zk4sim", "BZ1", "b1s"}, {"convoyeur", "AVANCE", "milieu"}};
    for (const auto& [name, command, sensor] : rows) {
        SCOPED_TRACE(name);
        const std::string file = files / (name + ".csv"), dump = files / (name + ".vcd");
        const station running(std::make_unique<program>(
            std::vector<std::string>{built(name), "--headless", "--no-panel", "--speed", "5"}));
        program one({built("quorin-io"), running.ident, "record", file}),
            other({built("quorin-io"), running.ident, "record", dump});
        ASSERT_TRUE(wait_until([&] { return !bytes_of(file).empty() && !bytes_of(dump).empty(); }));
        EXPECT_EQ(
            running.io({"set", command + "=1", "--until", sensor + "=1", "--timeout", "20"}).status,
            0);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        running.process->signal(SIGTERM);
        EXPECT_EQ(one.wait(), 0);
        EXPECT_EQ(other.wait(), 0);
        EXPECT_EQ(running.process->wait(), 0);
        const auto given = events_of(file, command), answered = events_of(file, sensor);
        ASSERT_EQ(given.size(), 2u);
        ASSERT_GE(answered.size(), 2u);
        EXPECT_LT(given[1].ms, answered[1].ms);
        const std::string waves = bytes_of(dump);
        EXPECT_NE(waves.find(" " + sensor + " $end\n"), std::string::npos);
        EXPECT_NE(waves.find("\n1" + waves.substr(waves.find(" " + sensor + " $end") - 1, 1) + "\n",
                             waves.find("$dumpvars\n") + 1),
                  std::string::npos);
    }
}

// Beside an observer a station still stops when its commander is gone.
TEST_F(QuorinIoRecordLaws, IsNoCommander) {
    const station running({"--no-panel", "--commander-timeout", "0.3"});
    program recording({built("quorin-io"), running.ident, "record", csv});
    EXPECT_EQ(running.io({"set", "BZ1=1", "--until", "b1s=1", "--timeout", "20"}).status, 0);
    EXPECT_EQ(running.io({"wait", "b1e=1", "--timeout", "20"}).status, 0);
    EXPECT_EQ(running.io({"end"}).status, 0);
    EXPECT_EQ(running.process->wait(), 0);
    EXPECT_EQ(recording.wait(), 0);
}

}  // namespace
