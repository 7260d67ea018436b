#include "station_view/window_layout.h"

#include <algorithm>

namespace window_layout {

namespace {

/// As high as the drawing needs to be for names as large as its width allows, but no more than so
/// much of the window: the rest is the exercise's.
int drawing_above_exercise(int w, int h) {
    constexpr int below = height - picture.h, edges = 2 * picture.x;
    constexpr double most = 0.6;
    const int needed = (w - edges) * 30 / 100 + below;
    return std::max(height, std::min(needed, static_cast<int>(h * most)));
}

}  // namespace

arrangement arranged(int w, int h, side_part side) {
    constexpr int middle_w = faults_title.x - 4 - (desk_title.x - 8),
                  faults_w = width - faults_title.x + 4;
    const int faults_x = w - faults_w, middle_h = std::min(h, height);
    if (h >= tall && side == side_part::exercise) {
        const int drawing_w = w - middle_w, drawing_h = drawing_above_exercise(drawing_w, h);
        return {{0, 0, drawing_w, drawing_h},
                {drawing_w, 0, middle_w, middle_h},
                {0, drawing_h, w, h - drawing_h}};
    }
    if (h >= tall)
        return {{0, 0, faults_x, h},
                {faults_x, 0, middle_w, middle_h},
                {faults_x, middle_h, faults_w, h - middle_h}};
    // The desk's column is lower when the window is, but never drawn out.
    const int middle_x = faults_x - middle_w;
    return {{0, 0, middle_x, h}, {middle_x, 0, middle_w, middle_h}, {faults_x, 0, faults_w, h}};
}

}  // namespace window_layout
