// A document of a million lines in the viewer's window, as its user feels it: how long the window
// takes to be there, and a page to be turned and drawn, and the memory beyond the caller's lines.
//
//     tools/with_display build/bench/bin/bench_viewer_window [lines]
#define FL_INTERNALS  // for Fl_X, which knows whether a window has been exposed
#include <FL/Fl.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Window.H>
#include <FL/x.H>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <list>
#include <string>
#include <vector>

#include "strings/number_formatting.h"
#include "viewer/viewer_window.h"

namespace {

using steady = std::chrono::steady_clock;

constexpr int rounds = 9;

std::vector<std::string> document(int count) {
    std::vector<std::string> lines = {"#C T30 T30 T "};
    lines.reserve(static_cast<std::size_t>(count));
    for (int index = 1; index < count; ++index)
        lines.push_back("ligne " + long2S(index) + "#valeur (" + long2S(index % 97) + ")");
    return lines;
}

/// The most memory that the process has held since `forget_peak`, in KiB.
long peak_kib() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (long value; word == "VmHWM:" && status >> value) return value;
    return 0;
}

void forget_peak() { std::ofstream("/proc/self/clear_refs") << 5; }

/// Draws what is to be drawn, and waits until the display has done it.
void draw() {
    Fl::check();
    Fl::flush();
    XSync(fl_display, False);
}

double ms_since(steady::time_point start) {
    return std::chrono::duration<double, std::milli>(steady::now() - start).count();
}

void print(const char* what, const std::function<double()>& measure) {
    std::vector<double> times;
    forget_peak();
    const long before_kib = peak_kib();
    for (int round = 0; round < rounds; ++round) times.push_back(measure());
    std::ranges::sort(times);
    std::printf("| %s | %.1f ms | %.1f ms | %ld KiB |\n", what, times[times.size() / 2],
                times.back(), peak_kib() - before_kib);
}

bool is_exposed(Fl_Window* window) {
    const Fl_X* const on_display = Fl_X::i(window);
    return on_display && !on_display->wait_for_expose;
}

/// One opening of the window, and its user, who cancels as soon as it is drawn.
struct opening {
    OFD_afficheur& viewer;
    steady::time_point start = steady::now();
    double drawn_ms = 0;

    static void look(void* self) { static_cast<opening*>(self)->look(); }
    void look() {
        if (!is_exposed(viewer.window)) return Fl::add_timeout(0.0005, look, this);
        draw();
        drawn_ms = ms_since(start);
        viewer.cancel_button->do_callback();
    }
};

double open_ms(OFD_afficheur& viewer, const std::function<void()>& activate) {
    opening measured{viewer};
    Fl::add_timeout(0, opening::look, &measured);
    activate();
    draw();
    return measured.drawn_ms;
}

void print_turns(OFD_afficheur& viewer) {
    const int last = viewer.display_filter->nb_pages();
    const struct {
        const char* name;
        int page;
    } places[] = {{"turn to the second page", 1},
                  {"turn a page in the middle", last / 2},
                  {"turn to the last page", last}};
    for (const auto& [name, page] : places) {
        print(name, [&viewer, page = page] {
            viewer.page_numero(page - 1);
            draw();
            const auto start = steady::now();
            viewer.page_suivante();
            draw();
            return ms_since(start);
        });
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> lines = document(argc > 1 ? std::atoi(argv[1]) : 1'000'000);
    const int count = static_cast<int>(lines.size());
    std::list<std::string> list(lines.begin(), lines.end());
    OFD_afficheur viewer(nullptr, 0);
    std::printf("| What | Median | Maximum | Memory more |\n|---|---|---|---|\n");
    print("open an array", [&] {
        return open_ms(viewer, [&] { viewer.activation(lines.data(), count, "mesure", "true"); });
    });
    viewer.window->show();
    while (!is_exposed(viewer.window)) Fl::wait(0.01);
    print_turns(viewer);
    viewer.window->hide();
    print("open a list",
          [&] { return open_ms(viewer, [&] { viewer.activation(list, "mesure", "true"); }); });
}
