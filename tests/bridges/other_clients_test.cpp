// quorin-modbus under clients that are not ours: pymodbus and mbpoll, of Debian's packages.
#include "tests/bridges/modbus_program.h"
#include "tests/support/pages.h"
#include "tests/support/runtime_folder.h"
#include "tests/support/station.h"

namespace {

class QuorinModbusAndOthers : public testing::Test {
protected:
    /// The first one of the PATH that has pymodbus, as ./check looks for it.
    static std::string python3() {
        const outcome found =
            run_program({"bash", "-c",
                         "for each in $(type -aP python3); do "
                         "\"$each\" -c 'import pymodbus' 2>&- && echo \"$each\" && exit; done"});
        EXPECT_TRUE(found.out.ends_with("/python3\n")) << "no python3 has pymodbus";
        return found.out.substr(0, found.out.find('\n'));
    }
    /// Runs a script of this folder.
    static outcome python(const std::string& script, std::vector<std::string> words) {
        words.insert(words.begin(), {python3(), QUORIN_SOURCE "/tests/bridges/" + script});
        return run_program(words, {}, seconds(100));
    }
    static std::string map_of(const station& running, const temporary_folder& files) {
        const outcome map = run_modbus({running.ident, "--map"});
        EXPECT_EQ(map.status, 0) << map.err;
        write_bytes(files / "map.csv", map.out);
        return files / "map.csv";
    }
    static outcome mbpoll(const modbus_bridge& bridge, std::vector<std::string> words) {
        std::vector<std::string> command = {
            "mbpoll", "-m", "tcp", "-p",       std::to_string(bridge.port),
            "-0",     "-1", "-q",  "127.0.0.1"};
        command.insert(command.begin() + 5, words.begin(), words.end());
        return run_program(command);
    }

    const runtime_folder folder_;
    const temporary_folder files_;
    leaves_nothing nothing_;
};

TEST_F(QuorinModbusAndOthers, PymodbusGetsWhatTheMapHasAndTheExceptionsOfTheRest) {
    const station running({"--no-panel", "--paused"});
    const std::string map = map_of(running, files_);
    for (const std::string control : {"0", "1"}) {
        const modbus_bridge bridge(running.ident, control == "1"
                                                      ? std::vector<std::string>{"--control"}
                                                      : std::vector<std::string>{});
        const outcome end =
            python("every_function.py", {std::to_string(bridge.port), control, map});
        EXPECT_EQ(end.status, 0) << end.out << end.err;
    }
}

TEST_F(QuorinModbusAndOthers, PymodbusMakesAGoodBase) {
    station running({"--no-panel", "--bases", "1", "--speed", "10"});
    const std::string map = map_of(running, files_);
    const modbus_bridge bridge(running.ident, {"--control"});
    const outcome end = python("good_base.py", {std::to_string(bridge.port), map, "10"});
    EXPECT_EQ(end.status, 0) << end.err;
    running.process->signal(SIGTERM);
    EXPECT_EQ(running.process->wait(), 0);
    EXPECT_EQ(running.summary(), "bilan: bonnes=1 mauvaises=0 incidents=0\n");
    EXPECT_EQ(bridge.process->wait(), 0);
}

TEST_F(QuorinModbusAndOthers, MbpollReadsEveryTableAndIsToldWhatThereIsNot) {
    const station running({"--no-panel", "--paused"});
    const modbus_bridge bridge(running.ident, {"--control"});
    const struct {
        std::vector<std::string> words;
        std::string shows;
    } rows[] = {{{"-t", "1", "-r", "0", "-c", "23"}, "[0]: \t1\n[1]: \t0\n[2]: \t1\n"},
                {{"-t", "0", "-r", "0", "-c", "13"}, "[11]: \t0\n[12]: \t0\n"},
                {{"-t", "3", "-r", "3", "-c", "1"}, "[3]: \t0\n"},
                {{"-t", "1", "-r", "23"}, "Illegal data address"},
                {{"-t", "0", "-r", "13"}, "Illegal data address"},
                {{"-t", "3", "-r", "4"}, "Illegal data address"},
                {{"-t", "4", "-r", "0"}, "Illegal data address"}};
    for (const auto& [words, shows] : rows) {
        const outcome end = mbpoll(bridge, words);
        EXPECT_NE((end.out + end.err).find(shows), std::string::npos)
            << testing::PrintToString(words) << end.out << end.err;
    }
}

// It goes as soon as it has written, and with it the command.
TEST_F(QuorinModbusAndOthers, MbpollWritesForAnInstant) {
    const station running({"--no-panel", "--paused"});
    const auto writes = [](const modbus_bridge& bridge) {
        return run_program({"mbpoll", "-m", "tcp", "-p", std::to_string(bridge.port), "-0", "-r",
                            "4", "-t", "0", "127.0.0.1", "1"});
    };
    {
        const modbus_bridge looking(running.ident, {});
        const outcome end = writes(looking);
        EXPECT_NE((end.out + end.err).find("Illegal function"), std::string::npos) << end.out;
    }
    const modbus_bridge bridge(running.ident, {"--control"});
    const outcome end = writes(bridge);
    EXPECT_NE(end.out.find("Written 1 references"), std::string::npos) << end.out << end.err;
    EXPECT_TRUE(bridge.says(": parti: les bobines valent 0\n"));
    EXPECT_EQ(running.value("RENT"), "0");
}

std::string replaced(std::string text, const std::string& old, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(old, at)) != std::string::npos; at += by.size())
        text.replace(at, old.size(), by);
    return text;
}

/// A text of a page, with that port in the place of the usual one.
std::string on_port(const std::string& text, int port) {
    return replaced(text, "1502", std::to_string(port));
}

class ModbusPages : public QuorinModbusAndOthers, public testing::WithParamInterface<std::string> {
protected:
    const std::string text = page("docs/" + GetParam() + ".md");
};

TEST_P(ModbusPages, ShowWhatMbpollReads) {
    const int port = free_port();
    const outcome end = run_program({"sh", "-c", on_port(code_blocks(text, "sh").at(0), port)},
                                    {"PATH=" QUORIN_PROGRAMS ":" + std::string(getenv("PATH"))});
    EXPECT_EQ(end.status, 0) << end.err;
    const std::string shown = on_port(code_blocks(text, "text").at(0), port);
    EXPECT_NE(end.err.find(shown), std::string::npos) << end.err << shown;
}

TEST_P(ModbusPages, ShowAPythonProgramThatCommands) {
    const station running({"--no-panel", "--speed", "5"});
    const modbus_bridge bridge(running.ident, {"--control"});
    const std::string program = on_port(code_blocks(text, "python").at(0), bridge.port);
    const outcome end = run_program({python3(), "-c", program});
    EXPECT_EQ(end.out, "b1s\n") << end.err;
    EXPECT_EQ(end.status, 0);
    EXPECT_TRUE(bridge.says(": parti: les bobines valent 0\n"));
    EXPECT_EQ(running.value("BZ1"), "0");
}

std::set<std::string> options_in(const std::string& text) {
    std::set<std::string> all;
    for (std::size_t at = 0; (at = text.find("--", at)) != std::string::npos;) {
        const std::size_t end =
            std::min(text.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", at), text.size());
        if (end > at + 2) all.insert(text.substr(at, end - at));
        at = end;
    }
    return all;
}

TEST_P(ModbusPages, HaveTheOptionsOfTheHelp) {
    const std::set<std::string> named = options_in(text);
    std::set<std::string> wanted = options_in(run_modbus({"--help"}).out);
    const std::string man = replaced(page("docs/man/quorin-modbus.1"), "\\-", "-");
    EXPECT_EQ(options_in(man), wanted);
    for (const char* const everywhere : {"--help", "--version"}) wanted.erase(everywhere);
    EXPECT_EQ(wanted.size(), 6u);
    for (const std::string& each : wanted) EXPECT_TRUE(named.contains(each)) << each;
}

INSTANTIATE_TEST_SUITE_P(Both, ModbusPages, testing::Values("modbus", "modbus_en"),
                         [](const auto& name) { return name.param; });

/// What a station says once nobody commands it.
const std::string nobody = "zk4sim: aucun client depuis trop longtemps: les commandes valent 0\n";

TEST_F(QuorinModbusAndOthers, ABridgeCommandsForTheStationOnlyWithControl) {
    const station running({"--no-panel", "--speed", "10", "--commander-timeout", "2"});
    const auto told = [&] { return std::ranges::count(running.process->err(), '\n'); };
    {
        const modbus_bridge commander(running.ident, {"--control"});
        std::this_thread::sleep_for(std::chrono::milliseconds(3500));
        EXPECT_EQ(told(), 0);
    }
    EXPECT_TRUE(wait_until([&] { return running.process->err() == nobody; }));
    const modbus_bridge observer(running.ident, {});
    EXPECT_EQ(running.io({"set", "BZ3=1", "--until", "b3s=1", "--timeout", "20"}).status, 0);
    EXPECT_EQ(running.io({"wait", "b3s=0", "--timeout", "20"}).status, 0);
    EXPECT_TRUE(observer.process->running());
}

}  // namespace
