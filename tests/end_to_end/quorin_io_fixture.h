// quorin-io against a segment of the test's own.
#pragma once
#include <algorithm>

#include "ioshare/io_holders.h"
#include "tests/ioshare/test_segment.h"

/// Runs quorin-io on a server's segment.
inline outcome io_on(test_server& server, std::vector<std::string> words) {
    words.insert(words.begin(), {built("quorin-io"), std::to_string(server->memory_ident())});
    return run_program(words);
}

class QuorinIo : public testing::Test {
protected:
    std::string ident() { return std::to_string(server->memory_ident()); }
    std::vector<std::string> command(std::vector<std::string> words) {
        words.insert(words.begin(), {built("quorin-io"), ident()});
        return words;
    }
    outcome io(const std::vector<std::string>& words) { return io_on(server, words); }
    /// Runs a line of sh, in which `io` stands for quorin-io and the identifier.
    outcome shell(const std::string& line) {
        return run_program(
            {"sh", "-c", "io() { " + built("quorin-io") + " " + ident() + " \"$@\"; }; " + line});
    }
    /// Waits until a program that only reads has the segment.
    bool looking(const program& reader) {
        return wait_until(
            [&] { return io_reading_attachments(server->memory_ident(), reader.id()) > 0; });
    }
    void publish(int input, int value) {
        server->setreset_input(input, value);
        server->inputs_go();
    }

    leaves_nothing nothing_;
    test_server server{{"te", "ts", "te", "x=y", "both"}, {"RENT", "SORT", "RENT", "both", "o=p"}};
};

/// The program refused: one line on the standard error stream, under its name, and nothing else.
inline void expect_one_line(const outcome& end, int status) {
    EXPECT_EQ(end.status, status);
    EXPECT_EQ(end.out, "");
    EXPECT_EQ(std::count(end.err.begin(), end.err.end(), '\n'), 1) << end.err;
    EXPECT_EQ(end.err.rfind("quorin-io: ", 0), 0u) << end.err;
}
