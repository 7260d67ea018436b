// Looking for things in a picture.
#pragma once
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "station_view/station_picture.h"

inline std::string name_of(const station_picture& picture, const picture_shape& shape) {
    return shape.thing < 0 ? "" : picture.things[static_cast<std::size_t>(shape.thing)].name;
}

/// The shapes that show the things of that name, from the lowest up.
inline std::vector<picture_shape> shapes_of(const station_picture& picture, std::string_view name) {
    std::vector<picture_shape> found;
    for (const picture_shape& each : picture.shapes)
        if (name_of(picture, each) == name) found.push_back(each);
    return found;
}

/// What stands in the picture, in the order in which it is drawn.
inline std::vector<std::string> texts_of(const std::vector<picture_shape>& shapes) {
    std::vector<std::string> texts;
    for (const picture_shape& each : shapes)
        if (each.kind == shape_kind::text) texts.push_back(each.text);
    return texts;
}

/// The least box around shapes.
inline picture_box around(const std::vector<picture_shape>& shapes) {
    if (shapes.empty()) return {};
    picture_box all = shapes.front().box;
    for (const picture_shape& each : shapes) {
        const int right = std::max(all.x + all.w, each.box.x + each.box.w);
        const int bottom = std::max(all.y + all.h, each.box.y + each.box.h);
        all.x = std::min(all.x, each.box.x);
        all.y = std::min(all.y, each.box.y);
        all.w = right - all.x;
        all.h = bottom - all.y;
    }
    return all;
}

inline bool meet(const picture_box& one, const picture_box& other) {
    return one.x < other.x + other.w && other.x < one.x + one.w && one.y < other.y + other.h &&
           other.y < one.y + one.h;
}

inline bool has(const std::vector<picture_shape>& shapes, shape_kind kind, ink colour) {
    return std::ranges::any_of(shapes, [=](const picture_shape& each) {
        return each.kind == kind && each.colour == colour;
    });
}

/// How bright a colour is in grey tones: 0 to 255.
inline double grey_of(std::uint32_t rgb) {
    return 0.299 * (rgb >> 16 & 255) + 0.587 * (rgb >> 8 & 255) + 0.114 * (rgb & 255);
}

/// Sizes that the drawing is made for.
inline constexpr struct {
    int w, h;
} sizes[] = {{1000, 300}, {1280, 420}, {1920, 700}, {1920, 1080}, {3840, 2000}, {2500, 300}};
