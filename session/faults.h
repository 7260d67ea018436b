// Faults that a teacher can set: a sensor that lies, an actuator that does not respond.
//
// They are a station model around another one. Whoever looks at the outer model sees what the panel
// sees; the inner one goes on by what is true.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session/station_model.h"

/// What can be wrong with a sensor (the first three) or with an actuator (`dead`).
enum class fault_kind {
    /// always reads 0
    stuck0,
    /// always reads 1
    stuck1,
    /// reads 1 for 0 and 0 for 1
    inverted,
    /// behaves as if it were not commanded
    dead,
    count
};

/// A fault: of an input for the kinds of a sensor, of an output for those of an actuator.
struct station_fault {
    std::string name;
    fault_kind kind;
    bool operator==(const station_fault&) const = default;
};

/// What a kind of fault befalls.
enum class fault_place { sensor, actuator };

/// The word for a kind, as users write it.
///
///     fault_kind_word(fault_kind::stuck0)  // "stuck0"
[[nodiscard]] std::string_view fault_kind_word(fault_kind kind);

/// The words for all kinds of a place, as a sentence lists them.
///
///     fault_kind_words(fault_place::sensor)  // "stuck0, stuck1, inverted"
[[nodiscard]] std::string fault_kind_words(fault_place place);

/// Whether a station with these names has something of that name that can have that fault. A name
/// that an input and an output both bear is the input's.
[[nodiscard]] bool fault_fits(std::string_view name, fault_kind kind, name_span inputs,
                              name_span outputs);

/// Reads a fault written NAME=KIND, names and kinds exactly as listed. Returns nothing when it is
/// none, with one line in `reason` that says why, in French (UTF-8) and without an end of line;
/// leaves `reason` alone otherwise.
///
///     const std::string_view inputs[] = {"te", "ts"}, outputs[] = {"RENT"};
///     std::string reason;
///     parse_fault("te=stuck0", inputs, outputs, reason)->kind  // fault_kind::stuck0
///     parse_fault("te", inputs, outputs, reason).has_value()  // false
///     reason  // "te: une panne s'écrit NOM=PANNE"
[[nodiscard]] std::optional<station_fault> parse_fault(std::string_view text, name_span inputs,
                                                       name_span outputs, std::string& reason);

/// A station with faults. Everything that no fault changes goes through to the model inside, which
/// must live as long, and is commanded and stepped through this one only.
class faulty_station : public station_model {
public:
    /// Without faults at first, and with every command at 0.
    explicit faulty_station(station_model& inside);

    /// Sets a fault, in the place of any that the name had. A sensor lies at once; an actuator
    /// fails from the next step on. False, and nothing done, where `fault_fits` says no.
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
    void step(double seconds) override { inside_.step(seconds); }
    int sensor(int input) const override;
    void set_desk(const station_desk& desk) override { inside_.set_desk(desk); }
    station_counts counts() const override { return inside_.counts(); }
    std::span<const station_incident> incidents() const override { return inside_.incidents(); }
    std::vector<station_fact> facts() const override { return inside_.facts(); }

private:
    // Where the fault of a name is kept; null for a name that stands for nothing.
    std::optional<fault_kind>* fault_of(std::string_view name);
    // Gives the model inside the command at that place, if there is one, as its fault lets it
    // through.
    void pass_command(int output);

    station_model& inside_;
    std::vector<std::int32_t> commands_;
    std::vector<std::optional<fault_kind>> sensor_faults_, actuator_faults_;
};
