// Numbers as exercises write and tell them, in any locale.
#pragma once
#include <cstdint>
#include <string>

#include "lesson/bilingual.h"

/// Milliseconds as seconds, with as many decimals as they need: "20", "0.5".
[[nodiscard]] std::string short_seconds(std::int64_t ms);

/// "1 point", "2 points".
[[nodiscard]] std::string points_text(std::int64_t points, language in);
