// Everything running at once, at a hundred publications a second: the station with its window,
// recorded in both forms, its panel, a bridge with a client that commands, and two scripts that
// look on. Memory and handles of each process are sampled, and stay what they are.
//
//     tools/with_display build/release/bin/soak_everything 3600
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "bench/soak/attack.h"
#include "bench/whole_program.h"
#include "tests/bridges/modbus_program.h"
#include "tests/support/runtime_folder.h"
#include "tests/support/screen.h"
#include "tests/support/station.h"

namespace {

/// In the second half of the time a process may hold so much more than in the first.
constexpr long growth_kib = 512;

struct watched {
    std::string name;
    pid_t pid;
    long first_kib = 0, second_kib = 0;
    std::size_t first_handles = 0, second_handles = 0;
};

std::size_t handles_of(pid_t pid) {
    std::error_code none;
    return static_cast<std::size_t>(std::distance(
        std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/fd", none), {}));
}

std::string name_of(pid_t pid) {
    std::string name;
    std::ifstream("/proc/" + std::to_string(pid) + "/comm") >> name;
    return name;
}

/// All of it, while it lives.
class everything {
public:
    explicit everything(attack& run) : run_(run), segment_(live_.ident) {
        if (!segment_) run.find("the station does not start: " + live_.process->err());
        if (display_.wait_for_window("quorin") == 0) run.find("no panel");
        beside_.push_back(std::make_unique<program>(io("watch")));
        beside_.push_back(std::make_unique<program>(io("record", files_ / "outside.csv")));
        bridge_.emplace(live_.ident, std::vector<std::string>{"--control"});
        client_.emplace(bridge_->port);
        for (const pid_t each : leftovers::processes()) all_.push_back({name_of(each), each});
        first_publication_ = segment_->inputs_clock;
    }

    /// A second of it: a hundred exchanges over Modbus, which leave the coils as a sequence has
    /// them.
    void second(long now) {
        for (int i = 0; i < 100; ++i) {
            const bool on = (now + i / 50) % 2 == 0;
            const std::string answer =
                client_->ask(on ? "0f 0000 000d 02 0010" : "0f 0000 000d 02 0008");
            if (answer != "0f 00 00 00 0d") return run_.find("the bridge answers " + answer);
            usleep(8'000);
        }
    }
    /// The largest that each process holds in either half; the first minute warms up.
    void sample(bool second_half) {
        for (watched& each : all_) {
            const long kib = resident_kib(each.pid);
            const std::size_t handles = handles_of(each.pid);
            if (kib == 0) run_.find(each.name + " is gone");
            long& most_kib = second_half ? each.second_kib : each.first_kib;
            std::size_t& most_handles = second_half ? each.second_handles : each.first_handles;
            most_kib = std::max(most_kib, kib);
            most_handles = std::max(most_handles, handles);
        }
    }
    void judge() {
        for (const watched& each : all_) {
            std::printf(
                "%-14s first half %6ld KiB %3zu handles, second half %6ld KiB %3zu handles\n",
                each.name.c_str(), each.first_kib, each.first_handles, each.second_kib,
                each.second_handles);
            if (!run_.judges_figures()) continue;
            if (each.second_kib > each.first_kib + growth_kib) run_.find(each.name + " grows");
            if (each.second_handles > each.first_handles)
                run_.find(each.name + " opens more and more");
        }
    }
    double publications() const {
        return static_cast<double>(segment_->inputs_clock - first_publication_);
    }
    void end() {
        live_.process->signal(SIGTERM);
        if (live_.process->wait(seconds(20)) != 0)
            run_.find("the station ended otherwise: " + live_.process->err());
    }

private:
    std::vector<std::string> io(const std::string& command, const std::string& file = "") {
        std::vector<std::string> all = {built("quorin-io"), live_.ident, command};
        if (!file.empty()) all.push_back(file);
        return all;
    }
    /// Fifty simulated seconds a second, in each of which every sensor flickers once: two changes.
    std::vector<std::string> station_command() {
        std::vector<std::string> all = {
            built("zk4sim"), "--speed", "50", "--csv", files_ / "a.csv", "--vcd", files_ / "a.vcd"};
        for (const char* const each : {"te", "b1e", "b2e", "b3e", "vh", "ph"}) {
            all.emplace_back("--fault");
            all.push_back(std::string(each) + "=flicker");
        }
        return all;
    }

    attack& run_;
    const runtime_folder runtime_;
    const temporary_folder files_{"quorin_soak_"};
    screen display_;
    station live_{std::make_unique<program>(station_command())};
    attached_segment segment_;
    std::vector<std::unique_ptr<program>> beside_;
    std::optional<modbus_bridge> bridge_;
    std::optional<modbus_connection> client_;
    std::vector<watched> all_;
    std::int64_t first_publication_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    attack run("everything", argc, argv, 3600);
    everything all(run);
    const auto from = std::chrono::steady_clock::now();
    const long warm = std::min(60L, run.wanted / 4);
    for (; run.goes_on(); run.done = static_cast<long>(seconds_since(from))) {
        all.second(run.done);
        if (run.done >= warm) all.sample(run.done >= (run.wanted + warm) / 2);
    }
    const double rate = all.publications() / seconds_since(from);
    if (run.judges_figures() && rate < 90)
        run.find("only " + std::to_string(rate) + " publications a second");
    all.judge();
    all.end();
    return run.finish("seconds", std::to_string(rate) + " publications a second");
}
