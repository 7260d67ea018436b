// The forms in which a session is kept: each a text that grows with its events.
#pragma once
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "session/station_events.h"

class recording_form {
public:
    virtual ~recording_form() = default;
    /// The text that these events add. The first call is given the whole first block: every input,
    /// every output.
    [[nodiscard]] virtual std::string text_of(std::span<const station_event> events) = 0;
};

/// The forms that there are; docs/recordings.md describes their bytes.
enum class recording_kind { csv, vcd, count };

/// What a kind of recording is called on command lines, and how its files end: "csv", "vcd".
[[nodiscard]] std::string_view recording_kind_word(recording_kind kind);
/// The kind that is called so; nothing for any other word.
[[nodiscard]] std::optional<recording_kind> recording_kind_called(std::string_view word);

/// A recording of that kind, at its beginning.
[[nodiscard]] std::unique_ptr<recording_form> new_recording(recording_kind kind);
