// A session as CSV, RFC 4180 with a line feed: docs/recordings.md draws it.
#pragma once
#include "recording/recorded_signals.h"
#include "recording/recording_form.h"

/// The row above all others.
inline constexpr std::string_view csv_head = "ms,genre,nom,valeur\n";

class csv_form : public recording_form {
public:
    [[nodiscard]] std::string text_of(std::span<const station_event> events) override;

private:
    recorded_signals signals_;
    bool begun_ = false;
};
