// The scene of a session: what the drawing shows, as it stands.
#pragma once
#include <string>

#include "session/live_session.h"
#include "session/station_events.h"
#include "lesson/bilingual.h"
#include "station_view/station_picture.h"
#include "workcell/workcell_model.h"

/// Follows the commands, which the model does not tell.
class scene_keeper : public event_reader {
public:
    /// `model` is the one that the session steps. Both must live as long.
    scene_keeper(live_session& session, const workcell_model& model, language in,
                 const std::string& title);

    void read(std::span<const station_event> events) override;
    /// The scene of this moment.
    const station_scene& now();

private:
    live_session& session_;
    const workcell_model& model_;
    station_scene scene_;
};
