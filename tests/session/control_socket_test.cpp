// The control socket: one request and one answer a connection, and nobody who holds the others up.
#include <gtest/gtest.h>

#include <list>

#include "tests/session/served_socket.h"

namespace {

/// An answer of status 2: the status, and one line that says so.
testing::AssertionResult is_misuse(const std::string& answer) {
    const bool one_line = std::ranges::count(answer, '\n') == 2 && answer.back() == '\n';
    if (answer.starts_with("2\n") && one_line && answer.size() > 3)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << testing::PrintToString(answer);
}

TEST(ControlSocket, OneRequestHasOneAnswerAndTheConnectionIsClosed) {
    served_socket test;
    EXPECT_EQ(test.answer_to("status\n"), "0\ndone: status\n");
    EXPECT_EQ(test.answer_to("desk atu=1 dc=0\n"), "0\ndone: desk atu=1 dc=0\n");
    EXPECT_EQ(test.requests, (std::vector<std::string>{"status", "desk atu=1 dc=0"}));
}

TEST(ControlSocket, TheFirstLineIsTheStatusTheRestWhatIsPrinted) {
    served_socket test;
    const struct {
        control_answer given;
        std::string sent;
    } rows[] = {{{exit_status::done, ""}, "0\n"},
                {{exit_status::refused, "non\n"}, "1\nnon\n"},
                {{exit_status::misuse, "quoi\n"}, "2\nquoi\n"},
                {{exit_status::session_over, "fini\n"}, "4\nfini\n"},
                {{exit_status::done, "a=1\nb=2\n"}, "0\na=1\nb=2\n"}};
    for (const auto& [given, sent] : rows) {
        test.carry_out = [answer = given](const std::string&) { return answer; };
        EXPECT_EQ(test.answer_to("x\n"), sent);
    }
}

TEST(ControlSocket, ARequestIsOfAtMost4096BytesItsEndOfLineIncluded) {
    served_socket test;
    EXPECT_EQ(test.answer_to(std::string(4095, 'a') + "\n"),
              "0\ndone: " + std::string(4095, 'a') + "\n");
    test.requests.clear();
    for (const std::size_t length : {4096u, 4097u, 5000u, 60'000u}) {
        EXPECT_TRUE(is_misuse(test.answer_to(std::string(length, 'a') + "\n"))) << length;
        EXPECT_TRUE(is_misuse(test.answer_to(std::string(length, 'a')))) << length;
    }
    EXPECT_TRUE(test.requests.empty());
}

TEST(ControlSocket, WhatIsNoRequestIsMisuseAndNeverCarriedOut) {
    using std::string_literals::operator""s;
    const std::string rows[] = {
        "\n",          " \n",         "\n\n",         " status\n",    "status \n", "desk  atu=1\n",
        "status\nx\n", "status\n\n",  "status\nx",    "status\r\n",   "a\tb\n",    "a\0b\n"s,
        "\0\n"s,       "status\0\n"s, "sta\x1Btus\n", "sta\x7Ftus\n", "\x01\n",    "desk  \n"};
    served_socket test;
    for (const std::string& bytes : rows)
        EXPECT_TRUE(is_misuse(test.answer_to(bytes))) << testing::PrintToString(bytes);
    EXPECT_TRUE(test.requests.empty()) << testing::PrintToString(test.requests);
}

TEST(ControlSocket, ALineThatTheClientNeverEndsIsMisuse) {
    served_socket test;
    for (const std::string bytes : {"status", "s", "desk atu=1"}) {
        const control_client client(control_socket_path(test.ident));
        client.send_bytes(bytes);
        client.finish();
        test.serve();
        EXPECT_TRUE(is_misuse(client.answer(0).value_or(""))) << bytes;
    }
    EXPECT_TRUE(test.requests.empty());
}

TEST(ControlSocket, AClientThatSaysNothingAtAllIsAnsweredNothing) {
    served_socket test;
    const control_client client(control_socket_path(test.ident));
    client.finish();
    test.serve();
    EXPECT_EQ(client.answer(0), "");
    EXPECT_FALSE(test.socket.next_deadline());
}

TEST(ControlSocket, ARequestMayComeInPieces) {
    served_socket test;
    const control_client client(control_socket_path(test.ident));
    for (const char* const piece : {"st", "at", "us", "\n"}) {
        EXPECT_FALSE(client.heard());
        client.send_bytes(piece);
        test.serve();
    }
    EXPECT_EQ(client.answer(0), "0\ndone: status\n");
}

TEST(ControlSocket, AClientThatDripsIsDroppedAfterASecond) {
    served_socket test;
    const control_client client(control_socket_path(test.ident));
    test.serve();
    int ms = 0;
    for (; ms < 1000; ms += 100) {
        EXPECT_FALSE(client.heard()) << ms;
        client.send_bytes("a");
        test.serve(ms);
    }
    test.serve(ms + 1);
    EXPECT_EQ(client.answer(0), "");
    EXPECT_TRUE(test.requests.empty());
    EXPECT_FALSE(test.socket.next_deadline());
}

TEST(ControlSocket, ASilentClientIsDroppedAfterASecondAndNoneBefore) {
    served_socket test;
    const control_client early(control_socket_path(test.ident));
    test.serve(0);
    const control_client late(control_socket_path(test.ident));
    test.serve(500);
    EXPECT_EQ(test.socket.next_deadline(), test.start + std::chrono::seconds(1));
    test.serve(999);
    EXPECT_FALSE(early.heard());
    test.serve(1001);
    EXPECT_EQ(early.answer(0), "");
    EXPECT_FALSE(late.heard());
    late.send_bytes("status\n");
    test.serve(1400);
    EXPECT_EQ(late.answer(0), "0\ndone: status\n");
}

TEST(ControlSocket, AClientThatOnlySendsNoMoreStillGetsItsAnswer) {
    served_socket test;
    const control_client client(control_socket_path(test.ident));
    client.send_bytes("status\n");
    client.finish();
    test.serve();
    EXPECT_EQ(client.answer(0), "0\ndone: status\n");
}

TEST(ControlSocket, AnswersThatComeLaterReachAllWhoWaitHoweverLong) {
    served_socket test;
    test.carry_out = [](const std::string&) { return std::nullopt; };
    std::list<control_client> waiting;
    for (const bool half_closed : {false, true, false}) {
        waiting.emplace_back(control_socket_path(test.ident)).send_bytes("step 1\n");
        if (half_closed) waiting.back().finish();
    }
    test.serve();
    EXPECT_TRUE(test.socket.anybody_waiting());
    test.serve(60'000);
    for (const control_client& each : waiting) EXPECT_FALSE(each.heard());
    test.socket.answer_waiting(test.start + std::chrono::seconds(61), {exit_status::done, ""});
    test.serve(61'000);
    for (const control_client& each : waiting) EXPECT_EQ(each.answer(0), "0\n");
    EXPECT_FALSE(test.socket.anybody_waiting());
}

TEST(ControlSocket, OthersAreAnsweredWhileOneWaits) {
    served_socket test;
    const auto at_once = test.carry_out;
    test.carry_out = [&](const std::string& request) {
        return request == "step 1" ? std::nullopt : at_once(request);
    };
    const control_client waiting(control_socket_path(test.ident));
    waiting.send_bytes("step 1\n");
    test.serve();
    EXPECT_EQ(test.answer_to("status\n"), "0\ndone: status\n");
    EXPECT_FALSE(waiting.heard());
}

TEST(ControlSocket, ClientsThatVanishAreForgotten) {
    served_socket test;
    for (const std::string bytes : {"", "sta", "status\n", "status\nmore", "later\n"}) {
        test.carry_out = [&](const std::string& request) -> std::optional<control_answer> {
            if (request == "later") return std::nullopt;
            return control_answer{exit_status::done, std::string(3000, 'x') + "\n"};
        };
        {
            const control_client client(control_socket_path(test.ident));
            if (bytes.size() % 2) test.serve();
            client.send_bytes(bytes);
        }
        test.serve();
        { const control_client other(control_socket_path(test.ident)); }
        test.serve(2000);
        EXPECT_FALSE(test.socket.next_deadline()) << bytes;
    }
    test.socket.answer_waiting(test.start, {exit_status::done, ""});
    test.serve(4000);
    EXPECT_FALSE(test.socket.anybody_waiting());
    EXPECT_TRUE(test.answer_to("status\n").starts_with("0\nxxx"));
}

TEST(ControlSocket, AnAnswerThatNobodyReadsHoldsNobodyUp) {
    served_socket test;
    test.carry_out = [](const std::string& request) {
        const std::size_t length = request == "all" ? 10'000'000 : 1;
        return control_answer{exit_status::done, std::string(length, 'x') + "\n"};
    };
    std::list<control_client> deaf;
    for (int i = 0; i < 20; ++i)
        deaf.emplace_back(control_socket_path(test.ident)).send_bytes("all\n");
    test.serve();
    EXPECT_EQ(test.answer_to("one\n"), "0\nx\n");
    test.serve(10'000);
    EXPECT_FALSE(test.socket.next_deadline());
}

}  // namespace
