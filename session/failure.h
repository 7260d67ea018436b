// How a program of this project fails, and with which status it ends.
#pragma once
#include <string>

/// The statuses of every program. docs/zk4sim.md lists them.
enum class exit_status : int {
    done = 0,
    /// It could not be done; nothing is half-written.
    refused = 1,
    /// A command line that is not understood.
    misuse = 2,
    /// The time of a wait is over, a condition does not hold.
    not_reached = 3,
    /// The session ended first.
    session_over = 4,
};

/// The one error that `main` turns into a line and a status.
struct failure {
    /// With which the program ends: never `done`.
    exit_status status;
    /// French (UTF-8), without the program's name. Several lines: one for each reason.
    std::string why;
};

/// The failure of a command line that is not understood.
inline failure misuse(const std::string& why) { return {exit_status::misuse, why}; }
/// The same, for a word that the command line does not have, fit to be shown.
inline failure not_understood(const std::string& word) {
    return misuse("ligne de commande incomprise: " + word);
}
/// The failure of what could not be done.
inline failure refusal(const std::string& why) { return {exit_status::refused, why}; }
/// The same, where the standard output takes nothing.
inline failure output_refusal() { return refusal("la sortie standard ne prend rien"); }
