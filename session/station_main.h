// A station as a program: its command line, its session, its status.
#pragma once
#include <functional>
#include <memory>
#include <string>

#include "ioshare/io_streams.h"
#include "session/command_line.h"
#include "session/live_session.h"
#include "session/session_options.h"
#include "session/station_model.h"

/// The main of a program: opens closed standard streams, outlives SIGXFSZ, does its work, and turns
/// a `failure` into lines on the standard error stream, each after the program's name. The
/// program's status.
[[nodiscard]] int program_main(const std::string& program, closed_stream closed,
                               const std::function<int()>& work);

/// Chooses how a session is run, once the model is there and before any segment is. May throw
/// `failure`.
using runner_choice = std::function<session_runner(station_model&, const session_options&)>;

/// Serves a station until its session ends: checks its names and the faults of the options, makes
/// the session, and runs it as the choice says; without one, without a window. The program's
/// status. Throws `failure`, and then nothing was served.
[[nodiscard]] int serve_station(station_model& model, const session_options& options,
                                const std::string& program, const runner_choice& choose_runner);

/// The main of a station's program, whose session has everything that sessions have: the panel's
/// process or a command, faults, speed, duration, pause, control by scripts. `line` has the
/// station's own options, those of every session are added to it. `make_model` is called once the
/// options have been read. Without a `choose_runner` the session runs without a window. The
/// program's status; docs/sessions.md lists them.
[[nodiscard]] int station_main(int argc, char** argv, command_line line,
                               const std::function<std::unique_ptr<station_model>()>& make_model,
                               const runner_choice& choose_runner = {});
