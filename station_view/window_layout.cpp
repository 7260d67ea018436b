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

constexpr int drawing_w = desk_title.x - 8;

/// Two lines.
constexpr int least_incidents_h = 34;

/// Four lines, which are larger in a high window: whoever stands far away reads them, too. In a low
/// one the drawing's names come first: its height is kept until two lines are left.
int incidents_height(int h) {
    if (h < height) return std::max(incidents.h - (height - h), least_incidents_h);
    return std::clamp(h / 11, incidents.h, 176);
}

/// The picture and the incidents in so much of the window's left.
arrangement beside(int w, int h, const area& middle, const area& faults) {
    const int narrower = drawing_w - w, lower = height - h;
    const int more = incidents_height(h) - incidents.h;
    return {{picture.x, picture.y, picture.w - narrower, picture.h - lower - more},
            {incidents.x, incidents.y - lower - more, incidents.w - narrower, incidents.h + more},
            middle,
            faults,
            false};
}

/// Whether a wider drawing would have no larger names: it is a hundred of them wide, and thirty
/// high.
bool has_width_enough(const area& drawing) { return drawing.w * 30 >= drawing.h * 100; }

}  // namespace

arrangement arranged(int w, int h, side_part side) {
    constexpr int middle_w = faults_title.x - 4 - drawing_w, faults_w = width - faults_title.x + 4;
    const int faults_x = w - faults_w, middle_h = std::min(h, height);
    if (h >= tall && side == side_part::exercise) {
        const int left_w = w - middle_w, above_h = drawing_above_exercise(left_w, h);
        return beside(left_w, above_h, {left_w, 0, middle_w, middle_h},
                      {0, above_h, w, h - above_h});
    }
    if (h >= tall)
        return beside(faults_x, h, {faults_x, 0, middle_w, middle_h},
                      {faults_x, middle_h, faults_w, h - middle_h});
    // The desk's column is lower when the window is, but never drawn out.
    const int middle_x = faults_x - middle_w;
    const arrangement three =
        beside(middle_x, h, {middle_x, 0, middle_w, middle_h}, {faults_x, 0, faults_w, h});
    if (w >= narrow || side == side_part::exercise || has_width_enough(three.picture)) return three;
    arrangement two =
        beside(faults_x, h, {faults_x, 0, faults_w, middle_h}, {faults_x, 0, faults_w, h});
    two.one_column = true;
    return two;
}

drawing_arrangement drawing_alone_arranged(int w, int h) {
    const arrangement now = beside(w, h, {}, {});
    const area& button = drawing_alone;
    area below = now.incidents;
    below.w -= button.w + picture.x;
    return {now.picture,
            below,
            {below.x + below.w + picture.x, below.y + below.h - button.h, button.w, button.h}};
}

}  // namespace window_layout
