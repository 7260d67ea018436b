#include "lesson/lesson_numbers.h"

std::string short_seconds(std::int64_t ms) {
    std::string text = std::to_string(ms / 1000);
    if (ms % 1000 == 0) return text;
    text += "." + std::to_string(1000 + ms % 1000).substr(1);
    return text.erase(text.find_last_not_of('0') + 1);
}

std::string points_text(std::int64_t points, language in) {
    const bool one = points == 1 || (points == 0 && in == language::french);
    return std::to_string(points) + (one ? " point" : " points");
}
