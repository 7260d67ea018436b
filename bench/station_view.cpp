// A frame of the station's drawing, on a display: how long the picture takes, and how long it takes
// to be painted, on each size.
//
//     tools/with_display build/bench/bin/bench_station_view
#include <FL/fl_draw.H>
#include <FL/x.H>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include "station_view/station_painter.h"
#include "tests/station_view/scenes.h"

namespace {

using steady = std::chrono::steady_clock;

constexpr int rounds = 101;

double median_ms(const std::function<void()>& work) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const auto start = steady::now();
        work();
        times.push_back(std::chrono::duration<double, std::milli>(steady::now() - start).count());
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// Paints off the screen, as a double-buffered window does, until the server has done it.
class off_screen {
public:
    off_screen(int w, int h) : pixels_(fl_create_offscreen(w, h)), w_(w), h_(h) {}
    ~off_screen() { fl_delete_offscreen(pixels_); }
    off_screen(const off_screen&) = delete;
    off_screen& operator=(const off_screen&) = delete;

    void paint(const std::function<void(const OFL_vision_sheet&)>& draw) {
        OFL_vision_sheet sheet;
        sheet.define(0, 0, w_, h_, static_cast<int>(FL_BLACK));
        fl_begin_offscreen(pixels_);
        draw(sheet);
        fl_end_offscreen();
        XSync(fl_display, False);
    }

private:
    Fl_Offscreen pixels_;
    int w_, h_;
};

}  // namespace

int main() {
    fl_open_display();
    std::printf(
        "| Pixels | Shapes | Picture | Painted | A bare fill | Frames a second |\n"
        "|---|---|---|---|---|---|\n");
    constexpr struct { int w, h; } sizes[] = {{1000, 300}, {1920, 700}, {1920, 1080}, {3840, 2160}};
    for (const auto& size : sizes) {
        const int w = size.w, h = size.h;
        const station_scene scene = scene_at_work();
        const station_picture picture = draw_station(scene, w, h);
        off_screen screen(w, h);
        const double drawn = median_ms([&] { draw_station(scene, w, h); });
        const double painted = median_ms(
            [&] { screen.paint([&](const OFL_vision_sheet& sheet) { paint(picture, sheet); }); });
        const double filled = median_ms([&] {
            screen.paint([&](const OFL_vision_sheet& sheet) {
                sheet.ofl_rectf(0, 0, w, h, static_cast<unsigned>(FL_WHITE));
            });
        });
        std::printf("| %d x %d | %zu | %.2f ms | %.1f ms | %.1f ms | %.0f |\n", w, h,
                    picture.shapes.size(), drawn, painted, filled, 1000 / (drawn + painted));
    }
}
