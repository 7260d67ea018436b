// A recording of a station that is not there: its inputs as they were recorded.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "recording/playback.h"
#include "recording/recording_reader.h"

/// A station whose sensors follow the recording. Its readers are handed the recorded events
/// themselves, at the times that they have there.
class played_recording : public playback, public station_model {
public:
    /// `recording` must outlive it.
    explicit played_recording(recording_reader& recording);

    /// Hands over everything at once, from the first block to the end.
    void play_all();

    std::string_view name() const override { return head_.station; }
    name_span inputs() const override { return inputs_; }
    name_span outputs() const override { return outputs_; }
    void set_command(int, std::int32_t) override {}
    void step(double seconds) override;
    int sensor(int input) const override;
    /// Of the station and of its driver: once for both.
    bool restart() override;
    station_counts counts() const override { return counts_; }
    std::span<const station_incident> incidents() const override { return incidents_; }
    std::vector<station_fact> facts() const override { return head_.facts; }

    std::string title() const override { return head_.title; }
    void before_begin(station_run&) override { tell_block(); }
    std::optional<std::string> before_step(station_run& run) override;
    std::int32_t command(int) const override { return 0; }

    /// Of the session: its end, where it comes before the recording's.
    void read(std::span<const station_event> events) override;
    /// None: there is nothing to compare with.
    const std::string& difference() const override { return no_difference_; }

private:
    void tell_block();
    void play_to(std::int64_t ms);
    void take_note(const recorded_event& event);

    recording_reader& recording_;
    // Its own: names are told for as long as the station lives.
    const recording_head head_;
    std::vector<std::string_view> inputs_, outputs_;
    std::vector<int> values_;
    station_counts counts_;
    std::vector<station_incident> incidents_;
    // What the events of the last step say.
    std::vector<recorded_event> played_;
    std::int64_t ms_ = 0;
    bool ended_ = false;
    const std::string no_difference_;
};
