// The faults that a teacher can set: a sensor that lies, an actuator that does not respond.
#pragma once
#include <optional>
#include <string>
#include <string_view>

enum class workcell_fault_kind {
    stuck0,    ///< a sensor that always reads 0
    stuck1,    ///< a sensor that always reads 1
    inverted,  ///< a sensor that reads 1 for 0 and 0 for 1
    dead       ///< an actuator that behaves as if it were not commanded
};

struct workcell_fault {
    std::string name;  ///< of an input for the first three kinds, of an output for `dead`
    workcell_fault_kind kind;
};

/// The word for a kind: "stuck0", "stuck1", "inverted" or "dead".
const char* fault_kind_name(workcell_fault_kind kind);

/// Whether the station has a sensor (or, for `dead`, an actuator) of that name.
bool fault_fits(std::string_view name, workcell_fault_kind kind);

/// Reads a fault written NAME=KIND, names and kinds exactly as listed. Returns nothing when it is
/// none, with one line in `reason` that says why, in French (UTF-8) and without an end of line;
/// leaves `reason` alone otherwise.
///
///     parse_fault("te=stuck0", reason);  // {"te", workcell_fault_kind::stuck0}
///     parse_fault("te", reason);         // nothing; "te: une panne s'écrit NOM=PANNE"
std::optional<workcell_fault> parse_fault(std::string_view text, std::string& reason);
