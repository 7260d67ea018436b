// A megabyte in the viewer of long messages: how long its user waits until it is drawn, compared
// with a bare browser of the toolkit that is filled line by line.
//
//     tools/with_display build/bench/bin/bench_message_viewer
#define FL_INTERNALS  // for Fl_X, which knows whether a window has been exposed
#include <FL/Fl.H>
#include <FL/Fl_Multi_Browser.H>
#include <FL/Fl_Window.H>
#include <FL/x.H>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "forms/dialogs.h"

namespace {

using steady = std::chrono::steady_clock;

constexpr std::size_t message_bytes = 1'000'000;
constexpr int characters = 80, rounds = 9;

std::string message(std::size_t line_bytes) {
    std::string text;
    while (text.size() < message_bytes) text += std::string(line_bytes, 'x') + "\n";
    return text;
}

double ms_since(steady::time_point start) {
    return std::chrono::duration<double, std::milli>(steady::now() - start).count();
}

bool is_exposed(Fl_Window* window) {
    const Fl_X* const on_display = Fl_X::i(window);
    return on_display && !on_display->wait_for_expose;
}

/// From its start until the open window has been drawn.
struct opening {
    steady::time_point start = steady::now();
    double drawn_ms = 0;

    static void look(void* self) { static_cast<opening*>(self)->look(); }
    void look() {
        Fl_Window* const window = Fl::first_window();
        if (!window || !is_exposed(window)) return Fl::add_timeout(0.0005, look, this);
        Fl::flush();
        XSync(fl_display, False);
        drawn_ms = ms_since(start);
        window->hide();
    }
};

double open_ms(const std::function<void()>& show) {
    opening measured;
    Fl::add_timeout(0, opening::look, &measured);
    show();
    return measured.drawn_ms;
}

void show_bare(const std::string& text) {
    Fl_Window window(6 * characters + 10, 570);
    Fl_Multi_Browser browser(5, 10, 6 * characters, 500);
    window.end();
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) browser.add(line.c_str());
    window.show();
    while (window.shown()) Fl::wait(0.001);
}

double median_ms(const std::function<void()>& show) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) times.push_back(open_ms(show));
    std::ranges::sort(times);
    return times[times.size() / 2];
}

}  // namespace

int main() {
    std::printf("| A megabyte in lines of | Ours | Bare browser | Ratio |\n|---|---|---|---|\n");
    for (const std::size_t line_bytes : {1000UL, 80UL, 20UL, 1UL, 0UL}) {
        const std::string text = message(line_bytes);
        const double ours = median_ms([&] { fl_show_Sbigmessages(text, characters); });
        const double bare = median_ms([&] { show_bare(text); });
        std::printf("| %zu bytes | %.1f ms | %.1f ms | %.2f |\n", line_bytes, ours, bare,
                    ours / bare);
    }
}
