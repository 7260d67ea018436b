// A session with the station's window.
#pragma once
#include "session/live_session.h"
#include "station_view/station_window.h"

/// The runner of a session of that station with a window. Opens the display at once: throws
/// `refusal` where there is none.
[[nodiscard]] session_runner run_in_window(station_model& model, const window_options& options);
