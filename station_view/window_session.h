// A session with the station's window.
#pragma once
#include "session/live_session.h"
#include "station_view/station_window.h"

/// The runner of a session with a window; exactly one of the stations is not null. Opens the
/// display at once: throws `refusal` where there is none.
[[nodiscard]] session_runner run_in_window(const workcell_model* drawn, manual_station* by_hand,
                                           const window_options& options);
