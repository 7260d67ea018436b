// quorin-modbus as a test starts it: on a segment, on a port that is free.
#pragma once
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tests/bridges/modbus_connection.h"
#include "tests/ioshare/test_segment.h"
#include "tests/support/elapsed.h"
#include "tests/support/programs.h"

/// A port on which nobody listens at this moment.
inline int free_port() {
    const int line = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in at{};
    at.sin_family = AF_INET;
    at.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof at;
    if (bind(line, reinterpret_cast<sockaddr*>(&at), size) == 0)
        getsockname(line, reinterpret_cast<sockaddr*>(&at), &size);
    close(line);
    return ntohs(at.sin_port);
}

/// A running quorin-modbus.
class modbus_bridge {
public:
    /// Starts it, and waits until it listens; on another port where somebody was quicker.
    modbus_bridge(const std::string& ident, std::vector<std::string> options) {
        options.insert(options.begin(), {built("quorin-modbus"), ident});
        for (int i = 0; i < 20; ++i) {
            port = free_port();
            std::vector<std::string> command = options;
            command.insert(command.end(), {"--port", std::to_string(port)});
            process = std::make_unique<program>(command);
            wait_until([&] { return !process->out().empty() || !process->running(); });
            if (process->err().find("déjà pris") == std::string::npos) return;
        }
    }
    /// Whether it has said a line that has this in it.
    bool says(const std::string& words, seconds limit = seconds(30)) const {
        return wait_until([&] { return process->err().find(words) != std::string::npos; }, limit);
    }

    std::unique_ptr<program> process;
    int port = 0;
};

/// Runs quorin-modbus to its end.
inline outcome run_modbus(std::vector<std::string> words) {
    words.insert(words.begin(), built("quorin-modbus"));
    return run_program(words);
}

/// It refused: one line on the standard error stream, under its name, and nothing else.
inline void expect_one_line(const outcome& end, int status, const std::string& shown = "") {
    EXPECT_EQ(end.status, status) << shown;
    EXPECT_EQ(end.out, "") << shown;
    EXPECT_EQ(std::count(end.err.begin(), end.err.end(), '\n'), 1) << shown << end.err;
    EXPECT_EQ(end.err.rfind("quorin-modbus: ", 0), 0u) << shown << end.err;
}

/// A segment of the test's own, and what is done with it.
class QuorinModbus : public testing::Test {
protected:
    std::string ident() { return std::to_string(link->memory_ident()); }
    void publish(int input, int value) {
        link->setreset_input(input, value);
        link->inputs_go();
    }
    /// The outputs, as a simulator sees them: "0 1".
    std::string outputs() {
        std::string all;
        for (int i = 0; i < link->segment->nb_outputs; ++i)
            all += (i ? " " : "") + std::to_string(link->output_value(i));
        return all;
    }
    bool outputs_become(const std::string& wanted, seconds limit = seconds(30)) {
        return wait_until([&] { return outputs() == wanted; }, limit);
    }

    leaves_nothing nothing_;
    test_server link{{"te", "ts", "vb", "vh", "p1", "p2", "p3", "pp", "te", "x,y"},
                     {"RENT", "SORT", "RENT"}};
};
