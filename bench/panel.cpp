// The panel as its user feels it, on a display: how long a published value takes to the screen and
// a click to the segment, what the idle panel costs, how soon its window is there.
//
//     tools/with_display build/bench/bin/bench_panel
#include <signal.h>
#include <sys/shm.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "bench/whole_program.h"
#include "ioshare/io_server.h"
#include "tests/support/programs.h"
#include "tests/support/screen.h"
#include "workcell/station_names.h"

namespace {

using steady = std::chrono::steady_clock;

constexpr int delays = 200, starts = 20;
constexpr double idle_s = 20;
constexpr std::uint32_t red = 0xFF0000, blue = 0x0000FF;

double ms_since(steady::time_point start) {
    return std::chrono::duration<double, std::milli>(steady::now() - start).count();
}

void print(const char* what, std::vector<double> values, const char* unit) {
    std::ranges::sort(values);
    std::printf("%-42s min %7.1f  median %7.1f  max %7.1f %s  (%zu)\n", what, values.front(),
                values[values.size() / 2], values.back(), unit, values.size());
}

/// Spins with short sleeps: finer than what is measured by two orders.
void wait_for(const std::function<bool()>& done) {
    while (!done()) std::this_thread::sleep_for(std::chrono::microseconds(300));
}

struct running_panel {
    IOsharemem_server server{{station_inputs.begin(), station_inputs.end()},
                             {station_outputs.begin(), station_outputs.end()}};
    std::unique_ptr<program> process;

    running_panel() {
        shmctl(server.ident, IPC_RMID, nullptr);
        process = std::make_unique<program>(std::vector<std::string>{
            built("quorin"), "-automemlink", std::to_string(server.ident)});
    }
    ~running_panel() {
        process.reset();
        shmdt(server.segment);
    }
};

void measure_starts(screen& display) {
    std::vector<double> ms;
    for (int i = 0; i < starts; ++i) {
        const auto start = steady::now();
        running_panel panel;
        wait_for([&] { return display.wait_for_window("quorin", seconds(0)) != 0; });
        ms.push_back(ms_since(start));
        panel.process->signal(SIGKILL);
        panel.process->wait();
        display.wait_for_windows(0);
    }
    print("start to mapped window", ms, "ms");
}

/// Delays begin at random moments of the panel's pass, so that they spread over all of it.
void measure_delays(screen& display) {
    running_panel panel;
    const x_window window = display.wait_for_window("quorin");
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    std::mt19937 random(1);
    const auto pause = [&] {
        std::this_thread::sleep_for(std::chrono::microseconds(100'000 + random() % 150'000));
    };

    constexpr int te = place_of(station_input::te), mt = place_of(station_output::MT);
    std::vector<double> to_pixel_ms, to_segment_ms;
    for (int i = 0; i < delays; ++i) {
        pause();
        const auto start = steady::now();
        panel.server.setreset_input(te, i % 2 == 0);
        panel.server.inputs_go();
        wait_for([&] { return display.pixel(window, 395, 14) == (i % 2 == 0 ? red : blue); });
        to_pixel_ms.push_back(ms_since(start));
    }
    for (int i = 0; i < delays; ++i) {
        pause();
        const auto start = steady::now();
        display.click(window, 45, 50);
        wait_for([&] { return panel.server.output_value(mt) == (i % 2 == 0); });
        to_segment_ms.push_back(ms_since(start));
    }
    print("publication to pixel", to_pixel_ms, "ms");
    print("click to segment", to_segment_ms, "ms");
}

void measure_idle(screen& display) {
    running_panel panel;
    display.wait_for_window("quorin");
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const double before_s = processor_seconds(panel.process->id());
    std::this_thread::sleep_for(std::chrono::duration<double>(idle_s));
    const double used_s = processor_seconds(panel.process->id()) - before_s;
    std::printf("%-42s %.2f %% of a core over %.0f s\n", "idle panel, processor time",
                100 * used_s / idle_s, idle_s);
    std::printf("%-42s %.1f MiB\n", "idle panel, resident memory",
                static_cast<double>(resident_kib(panel.process->id())) / 1024);
}

}  // namespace

int main() {
    screen display;
    measure_starts(display);
    measure_delays(display);
    measure_idle(display);
}
