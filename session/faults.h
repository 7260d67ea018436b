// Faults that a teacher can set: a sensor that lies, an actuator that does not respond.
//
// They are a station model around another one. Whoever looks at the outer model sees what the panel
// sees; the inner one goes on by what is true. They work around any model, save `slow`, which the
// model itself must offer.
#pragma once
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session/station_model.h"

/// What can be wrong with a sensor (the first five) or with an actuator.
enum class fault_kind {
    /// always reads 0
    stuck0,
    /// always reads 1
    stuck1,
    /// reads 1 for 0 and 0 for 1
    inverted,
    /// tells each change half a second late; before, what it told when the fault was set
    late,
    /// reads 0 during the first tenth of each simulated second
    flicker,
    /// behaves as if it were not commanded
    dead,
    /// moves at a quarter of its speed; only where the model can
    slow,
    count
};

/// A fault: of an input for the kinds of a sensor, of an output for those of an actuator.
struct station_fault {
    /// As the link has it; of an input and an output of one name, the input.
    std::string name;
    /// A name has one fault at a time.
    fault_kind kind;
    bool operator==(const station_fault&) const = default;
};

/// What a kind of fault befalls.
enum class fault_place { sensor, actuator };

/// The word for a kind, as users write it.
///
///     fault_kind_word(fault_kind::stuck0)  // "stuck0"
[[nodiscard]] std::string_view fault_kind_word(fault_kind kind);

/// The kind that is written so; nothing for any other word.
[[nodiscard]] std::optional<fault_kind> fault_kind_called(std::string_view word);

/// What the kind befalls.
[[nodiscard]] fault_place place_of(fault_kind kind);

/// The words for all kinds of a place, as a sentence lists them.
///
///     fault_kind_words(fault_place::actuator)  // "dead, slow"
[[nodiscard]] std::string fault_kind_words(fault_place place);

/// Whether the station has something of that name that can have that fault. A name that an input
/// and an output both bear is the input's.
[[nodiscard]] bool fault_fits(std::string_view name, fault_kind kind, const station_model& model);

/// Reads a fault written NAME=KIND, names and kinds exactly as listed; the last "=" is the one
/// between them. Returns nothing when the station can have no such fault, with one line in `reason`
/// that says why, in French (UTF-8) and without an end of line; leaves `reason` alone otherwise.
///
///     workcell_model model(29);
///     std::string reason;
///     parse_fault("te=stuck0", model, reason)->kind  // fault_kind::stuck0
///     parse_fault("te", model, reason).has_value()  // false
///     reason  // "te: une panne s'écrit NOM=PANNE"
[[nodiscard]] std::optional<station_fault> parse_fault(std::string_view text,
                                                       const station_model& model,
                                                       std::string& reason);

/// Tells each change of a value half a simulated second late.
class delay_line {
public:
    /// As if the value had always been this one.
    explicit delay_line(int value = 0) : told_(value), last_(value) {}

    /// The value at that time, in nanoseconds; times rise.
    void take(std::int64_t now_ns, int value);
    /// What it tells at the time of the last call of `take`.
    int told() const { return told_; }

private:
    struct change {
        std::int64_t due_ns;
        int value;
    };

    std::deque<change> on_the_way_;
    int told_, last_;
};

/// A station with faults. Everything that no fault changes goes through to the model inside, which
/// must live as long, and is commanded and stepped through this one only.
class faulty_station : public station_model {
public:
    /// Without faults at first, and with every command at 0.
    explicit faulty_station(station_model& inside);

    /// Sets a fault, in the place of any that the name had. A sensor lies at once; an actuator
    /// fails from the next step on. A fault that the name has already goes on as it is. False, and
    /// nothing done, where `fault_fits` says no.
    bool set_fault(std::string_view name, fault_kind kind);
    /// Ends the fault of that name: a sensor tells the truth again, an actuator gets the last
    /// command that it was given meanwhile. False when the name had none.
    bool end_fault(std::string_view name);
    /// The faults now set: those of sensors, then those of actuators, each in the order of the
    /// link.
    [[nodiscard]] std::vector<station_fault> faults() const;

    std::string_view name() const override { return inside_.name(); }
    name_span inputs() const override { return inside_.inputs(); }
    name_span outputs() const override { return inside_.outputs(); }
    void set_command(int output, std::int32_t value) override;
    void step(double seconds) override;
    int sensor(int input) const override;
    bool can_be_slow(int output) const override { return inside_.can_be_slow(output); }
    void set_slow(int output, bool slow) override { inside_.set_slow(output, slow); }
    void set_desk(const station_desk& desk) override { inside_.set_desk(desk); }
    /// Without faults again.
    bool restart() override;
    station_counts counts() const override { return inside_.counts(); }
    std::span<const station_incident> incidents() const override { return inside_.incidents(); }
    std::vector<station_fact> facts() const override { return inside_.facts(); }

private:
    using fault = std::optional<fault_kind>;

    // Where the fault of a name is kept; null for a name that stands for nothing.
    fault* fault_of(std::string_view name);
    // Puts a fault, or none, in the place of the one that the name has.
    void change_fault(std::string_view name, fault wanted);
    // Gives the model inside the command at that place, if there is one, as its fault lets it
    // through.
    void pass_command(int output);

    station_model& inside_;
    std::vector<std::int32_t> commands_;
    std::vector<fault> sensor_faults_, actuator_faults_;
    // One for each sensor, in use while it has a fault.
    std::vector<delay_line> delay_lines_;
    // Simulated time.
    std::int64_t now_ns_ = 0;
};
