// A text made unreadable at a glance: of that it keeps nobody who is determined.
#pragma once
#include <optional>
#include <string>
#include <string_view>

/// `text` as decimal digits, which cannot hold any word; the same ones each time.
[[nodiscard]] std::string hidden_part(std::string_view text);

/// The text of which `digits` was made; nothing when a digit was changed, lost or added.
///
///     shown_part(hidden_part("te"))  // "te"
[[nodiscard]] std::optional<std::string> shown_part(std::string_view digits);
