#include "station_view/scene_keeper.h"

#include <utility>

namespace {

session_mode mode_of(live_session& session) {
    if (session.over()) return session_mode::over;
    const bool paused = session.time().paused();
    if (session.replaying()) return paused ? session_mode::replay_paused : session_mode::replay;
    if (!session.commanded()) return session_mode::link_dead;
    return paused ? session_mode::paused : session_mode::running;
}

}  // namespace

scene_keeper::scene_keeper(live_session& session, const workcell_model& model, language in,
                           const std::string& title)
    : session_(session), model_(model) {
    scene_.english = in == language::english;
    scene_.title = title;
}

void scene_keeper::read(std::span<const station_event> events) {
    for (const station_event& each : events)
        if (each.kind == event_kind::output && std::cmp_less(each.index, scene_.commands.size()))
            scene_.commands[static_cast<std::size_t>(each.index)] =
                static_cast<std::int32_t>(each.value);
}

const station_scene& scene_keeper::now() {
    const station_run& run = session_.run();
    scene_.state = model_.state();
    for (std::size_t i = 0; i < scene_.sensors.size(); ++i)
        scene_.sensors[i] = run.model().sensor(static_cast<int>(i));
    scene_.desk = run.desk();
    scene_.mode = mode_of(session_);
    return scene_;
}
