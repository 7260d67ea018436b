// What quorin-modbus serves: the tables as the segment has them, the link's state, its end.
#include <sys/wait.h>

#include <thread>

#include "ioshare/io_clocks.h"
#include "tests/bridges/modbus_program.h"

namespace {

TEST_F(QuorinModbus, DiscreteInputsAndCoilsAreOneForExactlyOne) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection client(bridge.port);
    const int values[] = {1, 0, 2, -1, 1, 1 << 16, 257, 0, 1, 1};
    for (int i = 0; i < 10; ++i) link->setreset_input(i, values[i]);
    for (int i = 0; i < 3; ++i) link->segment->output_values[i] = 2 - i;
    EXPECT_EQ(client.ask("02 0000 000a"), "02 02 11 03");
    EXPECT_EQ(client.ask("01 0000 0003"), "01 01 02");
    EXPECT_EQ(client.ask("02 0000 000b"), "82 02");
    EXPECT_EQ(client.ask("01 0003 0001"), "81 02");
}

TEST_F(QuorinModbus, TheCountersLow32BitsComeHighWordFirst) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection client(bridge.port);
    io_write_clock(link->segment->inputs_clock, 0x123456789ABCDEF0);
    EXPECT_EQ(client.ask("04 0000 0002"), "04 04 9a bc de f0");
    link->inputs_go();
    EXPECT_EQ(client.ask("04 0000 0004"), "04 08 9a bc de f1 00 00 00 00");
}

/// The tenths of a second of an answer with an age alone.
int age_of(const std::string& answer) {
    const std::string bytes = hex(answer);
    if (bytes.size() != 4) return -1;
    return static_cast<unsigned char>(bytes[2]) * 256 + static_cast<unsigned char>(bytes[3]);
}

// Seen between the publication and its first answer, asked for between two other moments.
TEST_F(QuorinModbus, TheAgeOfTheLastPublicationGrowsByTenths) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection client(bridge.port);
    for (const int pause_ms : {450, 0, 250}) {
        const auto published = std::chrono::steady_clock::now();
        link->inputs_go();
        EXPECT_LE(age_of(client.ask("04 0002 0001")), seconds_since(published) * 10);
        const auto seen = std::chrono::steady_clock::now();
        std::this_thread::sleep_for(std::chrono::milliseconds(pause_ms));
        const int least = static_cast<int>(seconds_since(seen) * 10);
        const int age = age_of(client.ask("04 0002 0001"));
        EXPECT_GE(age, least);
        EXPECT_LE(age, seconds_since(published) * 10);
    }
}

TEST_F(QuorinModbus, EveryUnitIsAnsweredUnderItsOwnNumber) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection client(bridge.port);
    for (const int unit : {0, 1, 17, 247, 255}) {
        client.send(frame_of(hex("01 0000 0001"), 0xABCD, unit));
        EXPECT_EQ(client.read_frame(), frame_of(hex("01 01 00"), 0xABCD, unit));
    }
}

TEST_F(QuorinModbus, AnEndedSessionIsServedForTwoSecondsMore) {
    const modbus_bridge bridge(ident(), {});
    const modbus_connection client(bridge.port);
    EXPECT_EQ(client.ask("04 0003 0001"), "04 02 00 00");
    publish(0, 1);
    const given_clock clock;
    const auto end = std::chrono::steady_clock::now();
    link->sharing_terminate();
    EXPECT_TRUE(
        wait_until([&] { return client.ask("04 0003 0001") == "04 02 00 02"; }, seconds(1)));
    EXPECT_EQ(client.ask("02 0000 0001"), "02 01 01");
    while (client.ask("04 0003 0001") == "04 02 00 02") usleep(1000);
    EXPECT_EQ(bridge.process->wait(), 0);
    EXPECT_GE(seconds_since(end), 2);
    EXPECT_LT(clock.now_s(), 4);
    EXPECT_EQ(bridge.process->err(), "quorin-modbus: la session est terminée\n");
}

TEST_F(QuorinModbus, ALostLinkIsToldWithinTwoSecondsAndServedOn) {
    int lines[2];
    ASSERT_EQ(pipe(lines), 0);
    const pid_t maker = fork();
    if (maker == 0) {
        IOsharemem_server made({"a"}, {"B"});
        made.setreset_input(0, 1);
        [[maybe_unused]] const auto told = write(lines[1], &made.ident, sizeof made.ident);
        for (;;) pause();
    }
    int made = -1;
    ASSERT_EQ(read(lines[0], &made, sizeof made), static_cast<ssize_t>(sizeof made));
    for (const int each : lines) close(each);
    {
        const modbus_bridge bridge(std::to_string(made), {"--control"});
        const modbus_connection client(bridge.port);
        EXPECT_EQ(client.ask("04 0003 0001"), "04 02 00 00");
        kill(maker, SIGKILL);
        EXPECT_TRUE(
            wait_until([&] { return client.ask("04 0003 0001") == "04 02 00 01"; }, seconds(2)));
        waitpid(maker, nullptr, 0);
        EXPECT_EQ(client.ask("02 0000 0001"), "02 01 01");
        EXPECT_EQ(client.ask("05 0000 ff00"), "05 00 00 ff 00");
        EXPECT_EQ(client.ask("01 0000 0001"), "01 01 01");
        std::this_thread::sleep_for(std::chrono::milliseconds(2500));
        EXPECT_EQ(client.ask("04 0003 0001"), "04 02 00 01") << "served on";
    }
    shmctl(made, IPC_RMID, nullptr);
}

TEST_F(QuorinModbus, SigtermAndSigintEndItWithStatusZero) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        for (const std::vector<std::string>& options :
             {std::vector<std::string>{}, std::vector<std::string>{"--control"}}) {
            const modbus_bridge bridge(ident(), options);
            const modbus_connection client(bridge.port);
            EXPECT_EQ(client.ask("01 0000 0001"), "01 01 00");
            bridge.process->signal(number);
            EXPECT_EQ(bridge.process->wait(), 0) << number;
            EXPECT_TRUE(client.closes());
        }
}

// A shell that starts a program in the background has it ignore SIGINT.
TEST_F(QuorinModbus, SigintEndsItAlsoWhereItWasIgnored) {
    const int port = free_port();
    program shell({"sh", "-c",
                   "trap '' INT; exec " + built("quorin-modbus") + " " + ident() + " --port " +
                       std::to_string(port)});
    ASSERT_TRUE(wait_until([&] { return !shell.out().empty(); })) << shell.err();
    shell.signal(SIGINT);
    EXPECT_EQ(shell.wait(), 0);
}

TEST_F(QuorinModbus, WithoutControlItNeverWrites) {
    const modbus_bridge bridge(ident(), {});
    link->segment->output_values[1] = 1;
    const std::string before = bytes_at(link.bytes(), 0, 4556);
    {
        const modbus_connection client(bridge.port);
        for (const char* const request :
             {"05 0000 ff00", "0f 0000 0003 01 07", "06 0000 0001", "10 0000 0001 02 0001",
              "16 0000 0001 0002", "17 0000 0001 0000 0001 02 0001"}) {
            const std::string refused =
                in_hex(std::string(1, static_cast<char>(hex(request)[0] | 0x80)));
            EXPECT_EQ(client.ask(request), refused + " 01");
        }
    }
    bridge.process->signal(SIGTERM);
    EXPECT_EQ(bridge.process->wait(), 0);
    EXPECT_EQ(bytes_at(link.bytes(), 0, 4556), before);
    EXPECT_EQ(bridge.process->err(), "");
}

}  // namespace
