#include "programs/zk4sim/session.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>

#include "session/client_watch.h"
#include "session/panel_process.h"
#include "session/served_segment.h"
#include "session/session_end.h"
#include "workcell/station_names.h"
#include "session/supervisor.h"
#include "workcell/workcell_model.h"

namespace {

using steady = std::chrono::steady_clock;

constexpr double step_s = 0.010;
constexpr double panel_farewell_s = 3;
constexpr double client_look_s = 0.1;

/// The model on its segment, step by step.
class station_server {
public:
    station_server(IOsharemem_server& server, const zk4sim_options& options)
        : server_(server), model_(options.seed) {
        for (const workcell_fault& fault : options.faults) model_.add_fault(fault.name, fault.kind);
        publish();
    }

    /// One step of the model: the commands as they stand (all 0 without a commander), then the
    /// sensors.
    void step(bool commanded) {
        for (int i = 0; i < static_cast<int>(station_outputs.size()); ++i) {
            model_.set_command(i, commanded ? server_.output_value(i) : 0);
        }
        model_.step(step_s);
        ++steps_;
        publish();
        for (const workcell_incident& each : model_.take_incidents()) {
            std::fprintf(stderr, "%lld.%03lld s: incident: %s\n", milliseconds(each.time_s) / 1000,
                         milliseconds(each.time_s) % 1000, each.text);
        }
    }

    double simulated_s() const { return static_cast<double>(steps_) * step_s; }

    void print_summary() const {
        const workcell_state state = model_.state();
        std::fprintf(stderr, "bilan: bonnes=%d mauvaises=%d incidents=%d\n", state.good, state.bad,
                     state.incidents);
    }

private:
    static long long milliseconds(double time_s) { return std::llround(time_s * 1000); }

    void publish() {
        bool changed = false;
        for (int i = 0; i < static_cast<int>(station_inputs.size()); ++i) {
            const int value = model_.sensor(i);
            int& last = published_[static_cast<std::size_t>(i)];
            if (value == last) continue;
            server_.setreset_input(i, last = value);
            changed = true;
        }
        if (!changed || session_end::due()) return;
        server_.inputs_go();
        // An end that came in between stays one: the raised counter would open the session again.
        if (session_end::due()) server_.sharing_terminate();
    }

    IOsharemem_server& server_;
    workcell_model model_;
    std::array<int, station_inputs.size()> published_{};
    long long steps_ = 0;
};

/// Keeps simulated time beside real time. After a stop of the whole process it does not catch up
/// more than a second.
class pacer {
public:
    explicit pacer(double speed) : speed_(speed), start_(steady::now()) {}

    /// Whether the moment has come at which `simulated_s` seconds are over.
    bool due(double simulated_s) {
        const double behind_s = elapsed_s() - simulated_s / speed_;
        if (behind_s > 1)
            start_ += std::chrono::duration_cast<steady::duration>(
                std::chrono::duration<double>(behind_s));
        return behind_s >= 0;
    }
    /// Sleeps until then, one step at most, so that an end is noticed in time.
    void sleep(double simulated_s) const {
        const double ahead_s = simulated_s / speed_ - elapsed_s();
        if (ahead_s > 0) usleep(static_cast<useconds_t>(std::min(ahead_s, step_s) * 1e6));
    }

private:
    double elapsed_s() const {
        return std::chrono::duration<double>(steady::now() - start_).count();
    }
    double speed_;
    steady::time_point start_;
};

class session {
public:
    explicit session(const zk4sim_options& options)
        : options_(options),
          server_(make_station_server({station_inputs.begin(), station_inputs.end()},
                                      {station_outputs.begin(), station_outputs.end()})),
          clients_(options.commander_timeout_s
                       ? std::make_unique<client_watch>(server_.ident, station_holders)
                       : nullptr) {}

    int run() {
        if (!supervisor_.watch(server_.ident)) {
            std::cerr << "zk4sim: le processus de garde ne répond pas\n";
            return 1;
        }
        session_end::announce_on(*server_.segment);
        session_end::depend_on(supervisor_.id());
        station_server station(server_, options_);
        std::cout << "ident_mem=" << server_.ident << std::endl;
        if (!session_end::due() && !start_panel()) return 1;
        run_until_end(station);
        server_.sharing_terminate();
        wait_for_panel();
        station.print_summary();
        return 0;
    }

private:
    bool start_panel() {
        if (options_.no_panel) return true;
        panel_ = std::make_unique<panel_process>(options_.panel, server_.ident);
        if (panel_->problem().empty()) {
            session_end::depend_on(panel_->id());
            return true;
        }
        server_.sharing_terminate();
        std::cerr << "zk4sim: " << panel_->problem() << "\n";
        return false;
    }

    void run_until_end(station_server& station) {
        pacer pace(options_.speed);
        while (!over(station)) {
            while (pace.due(station.simulated_s() + step_s) && !duration_over(station) &&
                   !session_end::due()) {
                station.step(commanded());
            }
            pace.sleep(station.simulated_s() + step_s);
        }
    }

    /// Whether the session ends here; says why on the standard error stream.
    bool over(station_server& station) {
        if (session_end::asked()) return say("fin demandée");
        if (duration_over(station)) return say("durée écoulée");
        if (supervisor_.gone()) return say("le processus de garde a disparu");
        if (panel_ && panel_->ended()) {
            // The end comes first: the panel may have died with the lock, and the step would wait
            // for it.
            server_.sharing_terminate();
            station.step(false);  // A station whose commander is gone stops.
            const std::string how = panel_->bad_end();
            return say(how.empty() ? "panneau fermé" : "panneau terminé (" + how + ")");
        }
        return false;
    }

    static bool say(const std::string& why) {
        std::cerr << "zk4sim: " << why << "\n";
        return true;
    }

    bool duration_over(const station_server& station) const {
        return options_.duration_s && station.simulated_s() >= *options_.duration_s - step_s / 2;
    }

    /// Whether the commands count. Without a client for too long they do not, until one comes back.
    bool commanded() {
        if (!clients_) return true;
        const auto now = steady::now();
        if (now - last_look_ >= std::chrono::duration<double>(client_look_s)) {
            last_look_ = now;
            alone_ = clients_->seconds_alone() > *options_.commander_timeout_s;
            if (alone_ && !said_alone_)
                said_alone_ = say("aucun client depuis trop longtemps: les commandes valent 0");
        }
        return !alone_;
    }

    void wait_for_panel() {
        const auto last = steady::now() + std::chrono::duration<double>(panel_farewell_s);
        while (panel_ && !panel_->ended() && steady::now() < last) usleep(10'000);
    }

    const zk4sim_options& options_;
    supervisor supervisor_;  // Forked before the segment is made.
    IOsharemem_server server_;
    std::unique_ptr<client_watch> clients_;  // Only where it is looked at.
    std::unique_ptr<panel_process> panel_;
    steady::time_point last_look_;
    bool alone_ = false, said_alone_ = false;
};

}  // namespace

int serve_station(const zk4sim_options& options) {
    session_end::watch();
    return session(options).run();
}
