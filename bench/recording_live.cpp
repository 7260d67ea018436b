#include "bench/recording_live.h"

#include <cstdio>
#include <random>
#include <string>
#include <thread>

#include "bench/whole_program.h"
#include "ioshare/io_observer.h"
#include "tests/support/station.h"

namespace {

using steady = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int watched_s = 30;

/// A live session that publishes ten times a second, and how it answers.
struct watched_session {
    watched_session(const std::vector<std::string>& options)
        : served(options), link(std::stoi(served.ident), io_access::write) {}

    /// Commands the main belt at some moment between two steps, and waits until the station is no
    /// more, or again, at rest.
    void command(int value) {
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 60'000));
        link.write("MT", value);
        const auto start = steady::now();
        while (link.find("init")->value == value && seconds_since(start) < 1) {
            std::this_thread::sleep_for(200us);
            link.look();
        }
        answer_ms.push_back(seconds_since(start) * 1000);
    }

    station served;
    io_observer link;
    std::mt19937 random;
    std::vector<double> answer_ms;
};

void measure_live() {
    const temporary_folder files;
    const std::vector<std::string> plain = {"--headless", "--no-panel", "--fault", "te=flicker"};
    std::vector<std::string> kept = plain;
    for (const std::string each : {"--csv", "--vcd"}) {
        kept.push_back(each);
        kept.push_back(files / ("a" + each));
    }
    watched_session alone(plain), recorded(kept);
    const double alone_from = processor_seconds(alone.served.process->id());
    const double recorded_from = processor_seconds(recorded.served.process->id());
    const auto start = steady::now();
    for (int value = 1; seconds_since(start) < watched_s; value = 1 - value)
        for (watched_session* const each : {&alone, &recorded}) each->command(value);
    const double took = seconds_since(start);
    const double alone_s = processor_seconds(alone.served.process->id()) - alone_from;
    const double recorded_s = processor_seconds(recorded.served.process->id()) - recorded_from;
    std::printf("%.0f commands a second; processor: alone %.2f %%, recorded %.2f %% of a core\n",
                static_cast<double>(alone.answer_ms.size()) / took, 100 * alone_s / took,
                100 * recorded_s / took);
    std::printf("command to sensor, median: alone %.2f ms, recorded %.2f ms, ratio %.3f\n",
                median(alone.answer_ms), median(recorded.answer_ms),
                median(recorded.answer_ms) / median(alone.answer_ms));
}

void measure_memory() {
    const temporary_folder files;
    const station served({"--headless", "--no-panel", "--speed", "100", "--fault", "te=flicker",
                          "--csv", files / "a.csv"});
    std::this_thread::sleep_for(3s);
    const long early = resident_kib(served.process->id());
    std::this_thread::sleep_for(36s);
    std::printf("resident: %ld KiB after 5 minutes, %ld KiB after an hour more\n", early,
                resident_kib(served.process->id()));
}

}  // namespace

void measure_live_sessions() {
    measure_live();
    measure_memory();
}
