// Addresses, and what is said of those on which nobody can listen.
#include "bridges/listening_socket.h"

#include "tests/bridges/modbus_program.h"

namespace {

TEST(ListeningSocket, TellsAddressesAndWhichOfThemOthersReach) {
    const struct {
        std::string text;
        bool address, loopback;
    } rows[] = {{"127.0.0.1", true, true},    {"127.255.255.254", true, true},
                {"::1", true, true},          {"::ffff:127.0.0.1", true, true},
                {"0.0.0.0", true, false},     {"::", true, false},
                {"128.0.0.1", true, false},   {"126.255.255.255", true, false},
                {"203.0.113.7", true, false}, {"::2", true, false},
                {"localhost", false, false},  {"", false, false},
                {"127.0.0.1 ", false, false}, {"127.0.0.256", false, false},
                {"1502", false, false},       {"127.1", false, false}};
    for (const auto& [text, address, loopback] : rows) {
        EXPECT_EQ(is_ip_address(text), address) << text;
        EXPECT_EQ(is_loopback(text), loopback) << text;
    }
}

TEST(ListeningSocket, WritesAnAddressWithItsPort) {
    EXPECT_EQ(endpoint("127.0.0.1", 1502), "127.0.0.1:1502");
    EXPECT_EQ(endpoint("::1", 502), "[::1]:502");
}

TEST(ListeningSocket, SaysWhyItDoesNotListen) {
    const int port = free_port();
    const listening_socket first("127.0.0.1", port);
    ASSERT_EQ(first.problem(), "");
    const listening_socket second("127.0.0.1", port);
    EXPECT_EQ(second.problem(), "127.0.0.1:" + std::to_string(port) + ": déjà pris");
    const listening_socket elsewhere("203.0.113.7", port);
    EXPECT_EQ(elsewhere.problem(),
              "203.0.113.7:" + std::to_string(port) + ": cette machine n'a pas cette adresse");
    EXPECT_EQ(listening_socket("x", port).problem(),
              "x:" + std::to_string(port) + ": adresse inconnue");
}

TEST(ListeningSocket, TakesWhoComesAndNobodyElse) {
    const int port = free_port();
    const listening_socket door("127.0.0.1", port);
    EXPECT_EQ(door.take().socket, -1);
    EXPECT_FALSE(door.take().no_room);
    const modbus_connection client(port);
    const listening_socket::connection taken = door.take();
    EXPECT_GE(taken.socket, 0);
    EXPECT_EQ(taken.name.rfind("127.0.0.1:", 0), 0u) << taken.name;
    close(taken.socket);
}

}  // namespace
