// What the tests of zk4sim share: a fixture that looks after leftovers, and a session that is
// driven through its control socket.
#pragma once
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/control_client.h"
#include "tests/support/runtime_folder.h"
#include "tests/support/station.h"

class Zk4sim : public testing::Test {
protected:
    const runtime_folder folder;

private:
    leaves_nothing nothing_;
};

inline long lines_in(const std::string& text) { return std::ranges::count(text, '\n'); }

inline std::vector<std::string> zk4sim_command(const std::vector<std::string>& options) {
    std::vector<std::string> command = {built("zk4sim"), "--headless"};
    command.insert(command.end(), options.begin(), options.end());
    return command;
}

inline outcome run_zk4sim(const std::vector<std::string>& options) {
    return run_program(zk4sim_command(options), {}, seconds(60));
}

/// The summary that ends the error stream when nothing happened at the station.
inline const std::string nothing_made = "bilan: bonnes=0 mauvaises=0 incidents=0\n";

class controlled_station : public station {
public:
    using station::station;

    std::string socket() const { return control_socket_path(ident); }
    /// Sends a request: its answer, the status first.
    std::string ask(const std::string& request) const { return ask_session(socket(), request); }
    /// What `status` says of that name.
    std::string told(const std::string& name) const {
        const std::string lines = ask("status"), begin = "\n" + name + "=";
        const std::size_t at = lines.find(begin);
        if (at == std::string::npos) return "not told in: " + lines;
        const std::size_t value = at + begin.size();
        return lines.substr(value, lines.find('\n', value) - value);
    }
    /// Simulated seconds.
    double simulated_s() const {
        const std::string text = told("secondes");
        const std::size_t point = text.find('.');
        if (point == std::string::npos) return -1;
        return std::stoi(text) + std::stoi(text.substr(point + 1)) / 1000.0;
    }
    /// Ends it: its status.
    int end() const {
        process->signal(SIGTERM);
        return process->wait().value_or(-1);
    }
};
