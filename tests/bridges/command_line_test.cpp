// quorin-modbus's command line, its statuses, and the map that it prints.
#include "tests/bridges/modbus_program.h"
#include "tests/support/sanitizers.h"

namespace {

using words = std::vector<std::string>;

TEST_F(QuorinModbus, WhatIsNotUnderstoodIsMisuseInOneLine) {
    const words rows[] = {{},
                          {"x"},
                          {"12x"},
                          {ident(), "13"},
                          {ident(), "--nothing"},
                          {ident(), "--port", "0"},
                          {ident(), "--port", "65536"},
                          {ident(), "--port", "-1"},
                          {ident(), "--port", "1502x"},
                          {ident(), "--port", ""},
                          {ident(), "--port"},
                          {ident(), "--port", "1", "--port", "2"},
                          {ident(), "--listen", ""},
                          {ident(), "--listen", "nowhere.invalid"},
                          {ident(), "--listen", "127.0.0.1x"},
                          {ident(), "--safe-after", "2"},
                          {ident(), "--safe-after", "2", "--map"},
                          {ident(), "--control", "--safe-after", "0.19"},
                          {ident(), "--control", "--safe-after", "60.1"},
                          {ident(), "--control", "--safe-after", "0,5"},
                          {ident(), "--control", "--safe-after", "nan"},
                          {ident(), "--control", "--safe-after", ""},
                          {ident(), "--control=1"},
                          {ident(), "--clients", "0"},
                          {ident(), "--clients", "257"},
                          {ident(), "--clients", "2.5"},
                          {ident(), "--clients", ""},
                          {ident(), "--map", "--port", "1502"},
                          {ident(), "--map", "--control"}};
    for (const words& each : rows)
        expect_one_line(run_modbus(each), 2, testing::PrintToString(each));
}

TEST_F(QuorinModbus, WhatCannotBeDoneIsStatusOneInOneLine) {
    for (const words& each : {words{"0"}, words{"-7"}, words{"2147483646"},
                              words{"2147483646", "--map"}, words{"2147483646", "--control"},
                              // Kept for documents: no machine has it.
                              words{ident(), "--listen", "203.0.113.7"}})
        expect_one_line(run_modbus(each), 1, testing::PrintToString(each));
    raw_segment tiny(100);
    expect_one_line(run_modbus({std::to_string(tiny.ident)}), 1);
}

TEST_F(QuorinModbus, APortThatIsTakenIsStatusOneInOneLineAndLeavesTheOutputsAlone) {
    const modbus_bridge first(ident(), {});
    link->segment->output_values[0] = 1;
    for (const words& options : {words{}, words{"--control"}}) {
        words command = {ident(), "--port", std::to_string(first.port)};
        command.insert(command.end(), options.begin(), options.end());
        const outcome end = run_modbus(command);
        expect_one_line(end, 1);
        EXPECT_EQ(end.err,
                  "quorin-modbus: 127.0.0.1:" + std::to_string(first.port) + ": déjà pris\n");
    }
    EXPECT_EQ(outputs(), "1 0 0");
}

TEST_F(QuorinModbus, ASessionThatIsOverIsStatusFourAndItsMapIsStillThere) {
    link->sharing_terminate();
    expect_one_line(run_modbus({ident()}), 4);
    expect_one_line(run_modbus({ident(), "--control"}), 4);
    EXPECT_EQ(run_modbus({ident(), "--map"}).status, 0);
}

TEST_F(QuorinModbus, HelpAndVersionWorkInAnyPositionAndOnAClosedErrorStream) {
    for (const std::string asked : {"--help", "-h", "--version"})
        for (const std::string& line : {asked, "12 --port " + asked, "--nothing " + asked + " 0"}) {
            const outcome end =
                run_program({"sh", "-c", "exec " + built("quorin-modbus") + " " + line + " 2>&-"});
            EXPECT_EQ(end.status, 0) << line;
            EXPECT_EQ(end.out.find(asked == "--version" ? "quorin-modbus " : "Usage: ") !=
                          std::string::npos,
                      true)
                << line << end.out;
        }
}

TEST_F(QuorinModbus, AStandardOutputThatTakesNothingIsStatusOne) {
    for (const std::string& line :
         words{"--help", "--map", "--port " + std::to_string(free_port())})
        for (const char* const to : {">/dev/full", ">&-"}) {
            const outcome end = run_program(
                {"sh", "-c", "exec " + built("quorin-modbus") + " " + ident() + " " + line + to});
            EXPECT_EQ(end.status, 1) << line << to;
            EXPECT_EQ(end.err, "quorin-modbus: la sortie standard ne prend rien\n") << line << to;
        }
}

TEST_F(QuorinModbus, WithTooFewDescriptorsItSaysSoInOneLineOrServes) {
    constexpr int least = address_sanitizer ? 8 : 4;  // What watches over it takes some itself.
    int served = 0;
    for (int limit = least; limit < 16; ++limit) {
        program bridge({"sh", "-c",
                        "ulimit -n " + std::to_string(limit) + "; exec " + built("quorin-modbus") +
                            " " + ident() + " --control --port " + std::to_string(free_port())});
        wait_until([&] { return !bridge.out().empty() || !bridge.running(); });
        if (bridge.running()) {
            bridge.signal(SIGTERM);
            EXPECT_EQ(bridge.wait(), 0) << limit << bridge.err();
            ++served;
        } else if (bridge.err().find("shared libraries") == std::string::npos) {
            expect_one_line({bridge.wait().value_or(-1), bridge.out(), bridge.err()}, 1,
                            std::to_string(limit));
        }
    }
    EXPECT_GT(served, 2);
    EXPECT_LT(served, 12);
}

// One that could not begin leaves the outputs as they are.
TEST_F(QuorinModbus, AStartThatFailsWritesNothing) {
    link->segment->output_values[1] = 1;
    const outcome end =
        run_program({"sh", "-c",
                     "exec " + built("quorin-modbus") + " " + ident() + " --control --port " +
                         std::to_string(free_port()) + ">&-"});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(outputs(), "0 1 0");
}

TEST_F(QuorinModbus, PrintsItsMapAsCsvAndServesNothing) {
    const outcome end = run_modbus({ident(), "--map"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.err, "");
    EXPECT_TRUE(end.out.starts_with("table,adresse,nom\nentree_discrete,0,te\n")) << end.out;
    EXPECT_NE(end.out.find("\nentree_discrete,9,\"x,y\"\nbobine,0,RENT\nbobine,1,SORT\n"),
              std::string::npos)
        << end.out;
    EXPECT_TRUE(end.out.ends_with("\nregistre_entree,3,etat\n")) << end.out;
    EXPECT_EQ(run_modbus({"--map", "--", ident()}).out, end.out);
}

TEST_F(QuorinModbus, OnlyAnAddressThatOthersReachIsNamedInAWarning) {
    for (const std::string address : {"127.0.0.1", "localhost", "127.8.9.1", "0.0.0.0"}) {
        const modbus_bridge bridge(ident(), {"--listen", address});
        const bool open = address == "0.0.0.0";
        const std::string shown = address == "localhost" ? "127.0.0.1" : address;
        EXPECT_EQ(bridge.process->out(),
                  "modbus=" + shown + ":" + std::to_string(bridge.port) + "\n");
        EXPECT_EQ(std::ranges::count(bridge.process->err(), '\n'), open ? 1 : 0);
        EXPECT_EQ(bridge.process->err().find("0.0.0.0") != std::string::npos, open);
    }
}

}  // namespace
