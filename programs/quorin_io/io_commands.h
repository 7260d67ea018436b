// What quorin-io does on a segment, one function for each of its words.
//
// Each returns the program's status or throws a `failure`. NAME=VALUE words are read as they were
// typed; those that are wrong are refused before anything is written.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "ioshare/io_observer.h"

namespace io_commands {

inline constexpr int done = 0, refused = 1, misunderstood = 2, time_over = 3, session_ended = 4;

/// Ends the program's work with a status and one line on the standard error stream.
struct failure {
    int status;
    std::string why;
};

/// Prints direction, name and value of every input and output, separated by tabs.
int list(const segment_view& segment);

/// Prints the values of these inputs or outputs, one a line.
int get(const segment_view& segment, const std::vector<std::string>& names);

/// Writes outputs, from NAME=VALUE words.
int set(segment_view& segment, const std::vector<std::string>& words);

/// Returns once all the inputs have their values at once, looking every 2 ms. Without a timeout it
/// waits until the session ends.
int wait(const segment_view& segment, const std::vector<std::string>& words,
         std::optional<double> timeout_s);

/// Sets an output to 1, and after `length_s` seconds to 0. An interruption (SIGINT, SIGTERM,
/// SIGHUP) sets it back too: it must not stay on because a script was stopped.
int pulse(segment_view& segment, const std::string& name, double length_s);

/// Prints NAME=VALUE for each change of these inputs and outputs (all when none is named), until
/// the session ends.
int watch(const segment_view& segment, const std::vector<std::string>& names);

}  // namespace io_commands
