// A recording run again: its commands, desk and faults go to the station, and what the station
// answers is compared with what was recorded, row by row.
#pragma once
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "recording/playback.h"
#include "recording/recorded_signals.h"
#include "recording/recording_reader.h"

/// An honest recording gives the same events to the last one; its readers are handed those that
/// were found to be as recorded, and no other.
class replay : public playback {
public:
    /// `recording` must outlive it.
    explicit replay(recording_reader& recording);

    /// The faults that the recorded session hid: the run has them, and nobody is told. Before it
    /// begins.
    void hide(std::vector<station_fault> faults) { hidden_ = std::move(faults); }

    [[nodiscard]] std::string title() const override { return recording_.head().title; }
    [[nodiscard]] bool restart() override;
    void before_begin(station_run& run) override;
    [[nodiscard]] std::optional<std::string> before_step(station_run& run) override;
    [[nodiscard]] std::int32_t command(int output) const override;
    void read(std::span<const station_event> events) override;
    /// The first difference, once.
    [[nodiscard]] std::string trouble() override;

    /// Whether the recording ends within a step: with what the step took, or before all that the
    /// station answered.
    [[nodiscard]] bool cut_within_step() const { return cut_within_step_; }

    /// With its time, its name and both values.
    [[nodiscard]] const std::string& difference() const override { return difference_; }

private:
    void check_block(const station_run& run) const;
    void pass_exercise();
    void apply(station_run& run, const recorded_event& cause);
    [[nodiscard]] const recorded_event* expected();
    void drop_expected();
    [[nodiscard]] bool agrees(const station_event& event);
    void explain(const station_event& event, const recorded_event& recorded);
    void miss(const recorded_event& recorded);
    void differ(const station_event& where, const std::string& recorded, const std::string& played);
    void hand_over_agreed();

    recording_reader& recording_;
    recorded_signals signals_;
    // By their place on the link.
    std::vector<std::int32_t> commands_;
    // What was taken from the recording and not yet told by the run.
    std::deque<recorded_event> taken_;
    // Events found to be as recorded, and not yet handed over.
    std::vector<station_event> agreed_;
    std::deque<recorded_event> passed_;
    std::string difference_;
    std::vector<station_fault> hidden_;
    bool begun_ = false, ended_ = false, told_ = false, cut_within_step_ = false;
};
