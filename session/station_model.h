// What a session serves: a station, as a model that is stepped.
//
// A model has no clock, no window, no file and no link. It is told its commands and its desk, is
// stepped, and is asked for its sensors. The same commands, desk and steps must give the same
// answers each time: recordings are replayed by that. examples/convoyeur is a whole one.
#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The names of a station's inputs or outputs, in the order in which the link carries them.
using name_span = std::span<const std::string_view>;

/// Something that went wrong at the station.
struct station_incident {
    /// Simulated milliseconds from the start.
    std::int64_t ms;
    /// French (UTF-8), one line; outlives the model.
    std::string_view text;
};

/// The operator's desk.
struct station_desk {
    /// start cycle, while it is held
    bool dc = false;
    /// stop cycle, while it is held
    bool ac = false;
    /// emergency stop, latched
    bool atu = false;
    bool operator==(const station_desk&) const = default;
};

/// What the station has made since its start.
struct station_counts {
    /// Whole pieces, each counted once: as good or as bad.
    int good = 0, bad = 0;
    bool operator==(const station_counts&) const = default;
};

/// With what a station was set up, as recordings tell it: "graine", "29". One without a value is
/// not told.
struct station_fact {
    /// UTF-8, one line each. A replay hands them over as they were told.
    std::string name, value;
};

class station_model {
public:
    virtual ~station_model() = default;

    /// The station's name in recordings and in `quorin-io status`: "zk4".
    virtual std::string_view name() const = 0;
    /// Its inputs (sensors) and outputs (commands); the same ones for the model's whole life.
    virtual name_span inputs() const = 0;
    virtual name_span outputs() const = 0;

    /// Sets the command at `output`, as the link holds it; it acts from the next step on. Does
    /// nothing for an index that does not exist.
    virtual void set_command(int output, std::int32_t value) = 0;
    /// Advances by `seconds` of simulated time; sessions step by 0.010.
    virtual void step(double seconds) = 0;
    /// The sensor at `input`, 1 or 0; 0 for an index that does not exist.
    virtual int sensor(int input) const = 0;

    /// Whether what `output` commands can be slow, which is a fault that a model offers by itself.
    virtual bool can_be_slow(int /*output*/) const { return false; }
    /// From the next step on it moves at a quarter of its speed, or at its full speed again. Does
    /// nothing where `can_be_slow` says no.
    virtual void set_slow(int /*output*/, bool /*slow*/) {}

    /// Goes back to its start: as it was made, every command off, no slowness. False where it
    /// cannot, and then nothing was done. Only a replay that is taken back asks for it.
    virtual bool restart() { return false; }

    /// Sets the desk; it acts from the next step on. A station without a desk ignores it.
    virtual void set_desk(const station_desk&) {}
    /// What it has made since its start.
    virtual station_counts counts() const { return {}; }
    /// What went wrong in the last step, oldest first; valid until the next step.
    virtual std::span<const station_incident> incidents() const { return {}; }
    /// With what it was set up.
    virtual std::vector<station_fact> facts() const { return {}; }
};

/// The place of `name` in a list of names; -1 when it is not there. The last one counts where
/// several bear it, as on the link.
constexpr int index_of(name_span names, std::string_view name) {
    for (std::size_t i = names.size(); i > 0; --i)
        if (names[i - 1] == name) return static_cast<int>(i - 1);
    return -1;
}
