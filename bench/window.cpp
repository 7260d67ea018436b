// What the station's window costs: processor time at rest and in motion, pictures a second, what a
// publication needs to the panel beside one without a window, memory over a day.
//
//     QUORIN_SCREEN=1920x1080x24 tools/with_display build/bench/bin/bench_window [HOURS]
//
// With HOURS, simulated ones at a hundred times the speed, it measures memory alone.
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "bench/whole_program.h"
#include "ioshare/io_observer.h"
#include "panel/form_children.h"
#include "station_view/window_layout.h"
#include "tests/support/screen.h"
#include "tests/support/station.h"

namespace {

using steady = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int watched_s = 20, delays = 100;
constexpr std::uint32_t red = 0xFF0000, blue = 0x0000FF;

/// zk4sim with these options and no others.
std::unique_ptr<program> started(std::vector<std::string> options) {
    options.insert(options.begin(), built("zk4sim"));
    return std::make_unique<program>(options);
}

/// Ends a measurement that would be one of something else.
void expect_window(x_window window) {
    if (window) return;
    std::fputs("the window did not appear\n", stderr);
    std::exit(1);
}

/// A station that is commanded from here.
struct commanded_station {
    explicit commanded_station(const std::vector<std::string>& options)
        : served(started(options)) {}
    ~commanded_station() {
        served.process->signal(SIGTERM);
        (void)served.process->wait();
    }
    pid_t id() const { return served.process->id(); }
    /// Attached from the first command on: only a station that is alone rests.
    void command(const std::string& output, int value) {
        if (!link) link.emplace(std::stoi(served.ident), io_access::write);
        link->write(output, value);
    }

    station served;
    std::optional<io_observer> link;
};

/// The share of a core that a process takes while somebody waits.
double processor_percent(pid_t id) {
    const double before = processor_seconds(id);
    const auto start = steady::now();
    std::this_thread::sleep_for(std::chrono::seconds(watched_s));
    return 100 * (processor_seconds(id) - before) / seconds_since(start);
}

void measure_processor() {
    screen display;
    for (const std::string option : {"--headless", "--no-panel"}) {
        const bool has_window = option != "--headless";
        commanded_station running(has_window ? std::vector<std::string>{option}
                                             : std::vector<std::string>{option, "--no-panel"});
        if (has_window) expect_window(display.wait_for_window("Station ZK4"));
        std::this_thread::sleep_for(3s);
        const double at_rest = processor_percent(running.id());
        running.command("MT", 1);
        running.command("MTA", 1);
        const double in_motion = processor_percent(running.id());
        (void)running.served.io({"pause"});
        const double paused = processor_percent(running.id());
        std::printf("%-12s at rest %.2f %%, in motion %.2f %%, paused %.2f %% of a core\n",
                    has_window ? "window:" : "no window:", at_rest, in_motion, paused);
    }
}

/// How many different pictures of running belts the display shows in a second.
void measure_frames() {
    screen display;
    // Nothing is on the belts.
    commanded_station running({"--no-panel", "--bases", "0"});
    const x_window window = display.wait_for_window("Station ZK4");
    expect_window(window);
    running.command("MT", 1);
    running.command("MTA", 1);
    std::this_thread::sleep_for(2s);
    int y = window_layout::picture.y;
    const auto row = [&] {
        std::vector<std::uint32_t> colours;
        const int end = window_layout::picture.x + window_layout::picture.w;
        for (int x = window_layout::picture.x; x < end; x += 20)
            colours.push_back(display.pixel(window, x, y));
        return colours;
    };
    const auto runs = [&] {
        const auto before = row();
        std::this_thread::sleep_for(100ms);
        return row() != before;
    };
    const int end_y = y + window_layout::picture.h;
    while (y < end_y && !runs()) y += 2;  // The belts' upper edge.
    int pictures = 0;
    const auto start = steady::now();
    for (auto before = row(); seconds_since(start) < watched_s;) {
        auto now = row();
        pictures += now != before;
        before = std::move(now);
    }
    std::printf("window: %.0f pictures a second of running belts\n",
                pictures / seconds_since(start));
}

/// A station with its panel: how long a command takes to the panel's lamp.
struct shown_station {
    shown_station(screen& display, const std::vector<std::string>& options)
        : running(options), display(display), panel(display.wait_for_window("quorin")) {}

    void command(int value) {
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 150'000));
        const auto start = steady::now();
        running.command("MT", value);
        while (display.pixel(panel, lamp.x + 4, lamp.y + 4) != (value ? blue : red) &&
               seconds_since(start) < 2)
            std::this_thread::sleep_for(300us);
        delay_ms.push_back(seconds_since(start) * 1000);
    }

    static const quorin_form::child& lamp_of(const std::string& name) {
        return *std::ranges::find_if(quorin_form::children, [&](const quorin_form::child& each) {
            return each.member > 0 && name == each.name;
        });
    }

    commanded_station running;
    screen& display;
    x_window panel;
    const quorin_form::child& lamp = lamp_of("init");
    std::mt19937 random;
    std::vector<double> delay_ms;
};

double panel_delay(const std::vector<std::string>& options) {
    screen display;
    shown_station shown(display, options);
    if (options.empty()) expect_window(display.wait_for_window("Station ZK4"));
    std::this_thread::sleep_for(2s);
    for (int i = 0; i < delays; ++i) shown.command(i % 2 == 0);
    return median(shown.delay_ms);
}

void measure_delays() {
    std::vector<double> headless, windowed;
    for (int i = 0; i < 3; ++i) {
        headless.push_back(panel_delay({"--headless"}));
        windowed.push_back(panel_delay({}));
    }
    std::printf("command to the panel's lamp: no window %.1f ms, window %.1f ms, ratio %.2f\n",
                median(headless), median(windowed), median(windowed) / median(headless));
}

void measure_memory(int hours) {
    screen display;
    commanded_station running({"--no-panel", "--speed", "100"});
    expect_window(display.wait_for_window("Station ZK4"));
    std::mt19937 random;
    static const std::string outputs[] = {"MTA", "MT", "DEPOSE", "SORT", "RENT", "BZ1", "DESP"};
    const auto start = steady::now();
    long early = 0;
    while (seconds_since(start) < hours * 36.0) {
        running.command(outputs[random() % 7], static_cast<int>(random() % 2));
        std::this_thread::sleep_for(20ms);
        if (!early && seconds_since(start) > 72) early = resident_kib(running.id());
    }
    std::printf("resident: %ld KiB after 2 simulated hours, %ld KiB after %d\n", early,
                resident_kib(running.id()), hours);
}

}  // namespace

int main(int argc, char** argv) {
    const int hours = argc > 1 ? std::atoi(argv[1]) : 0;
    if (hours > 0) {
        measure_memory(hours);
    } else {
        measure_processor();
        measure_frames();
        measure_delays();
    }
}
