// A session as a value change dump (IEEE 1364), for wave viewers: docs/recordings.md draws it.
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "recording/recorded_signals.h"
#include "recording/recording_form.h"

class vcd_form : public recording_form {
public:
    [[nodiscard]] std::string text_of(std::span<const station_event> events) override;

private:
    std::string head(std::span<const station_event> first_block);
    std::string scope(std::span<const station_event> first_block, event_kind kind,
                      std::string_view word);
    std::string change(const station_event& event);
    std::string at(std::int64_t ms);
    std::string new_code();

    recorded_signals signals_;
    /// What the dump calls a variable, and its last value.
    struct variable {
        std::string code;
        char bit = 'x';
    };
    std::map<std::pair<event_kind, std::string>, variable> variables_;
    std::size_t next_code_ = 0;
    std::int64_t ms_ = -1;
};
