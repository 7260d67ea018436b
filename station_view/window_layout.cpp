#include "station_view/window_layout.h"

#include <algorithm>

namespace window_layout {

arrangement arranged(int w, int h) {
    constexpr int middle_w = faults_title.x - 4 - (desk_title.x - 8),
                  faults_w = width - faults_title.x + 4;
    const int faults_x = w - faults_w, middle_h = std::min(h, height);
    if (h >= tall)
        return {{0, 0, faults_x, h},
                {faults_x, 0, middle_w, middle_h},
                {faults_x, middle_h, faults_w, h - middle_h}};
    // The desk's column is lower when the window is, but never drawn out.
    const int middle_x = faults_x - middle_w;
    return {{0, 0, middle_x, h}, {middle_x, 0, middle_w, middle_h}, {faults_x, 0, faults_w, h}};
}

}  // namespace window_layout
