// A session: a station served on the link in real time, to the panel or the command that it starts,
// or to whoever attaches.
//
// It never waits by itself. Whoever runs it calls `service` when the descriptor can be read or the
// time that the last call gave is over: a loop around poll, or a toolkit's own loop.
#pragma once
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ioshare/io_server.h"
#include "session/child_process.h"
#include "session/commander.h"
#include "session/control_requests.h"
#include "session/control_socket.h"
#include "session/link_publisher.h"
#include "session/messages.h"
#include "session/served_segment.h"
#include "session/session_end.h"
#include "session/session_follower.h"
#include "session/session_options.h"
#include "session/session_report.h"
#include "session/session_driver.h"
#include "session/station_run.h"
#include "session/step_clock.h"
#include "session/supervisor.h"

class live_session {
public:
    /// Real time.
    using duration = step_clock::duration;

    /// Makes the segment, and the process that watches over it. `model`, `options` and `messages`
    /// must live as long. One session a process; `end_signals::watch` comes before it. Throws
    /// `refusal`.
    live_session(station_model& model, const session_options& options, message_stream& messages);
    ~live_session();
    live_session(const live_session&) = delete;
    live_session& operator=(const live_session&) = delete;

    /// A reader of its events, besides its own. Before `begin`.
    void add_reader(event_reader& reader) { run_.add_reader(reader); }
    /// Somebody who is begun and finished with it, and whose troubles it tells. Must live as long.
    /// Before `begin`.
    void add_follower(session_follower& follower) { followers_.push_back(&follower); }
    /// The station takes commands, desk and faults from `driver`, which must live as long, and no
    /// more from the link and those who ask. Before `begin`.
    void take_from(session_driver& driver);
    /// The session has a task: `examiner`, which must live as long, follows it and says when it is
    /// over. Before `begin`.
    void set_examiner(session_examiner& examiner);
    /// Whether it has one: its faults stay as they are.
    bool examined() const { return examiner_ != nullptr; }
    /// Whether it is over because its task was: all of it was done, or its time has passed.
    bool ended_with_task() const;
    /// Under which it is told: a replay's is the recording's. Empty: none.
    std::string title() const { return driver_ ? driver_->title() : options_.title; }
    /// How long the replay is, in simulated milliseconds; nothing where none is, or nobody knows.
    std::optional<std::int64_t> replay_length_ms() const;
    /// Takes a replay to that moment, forth or back, as fast as it can; then it goes on, or stays
    /// in its pause. False where it cannot go back, and then nothing was done.
    bool go_to(std::int64_t ms);
    /// At its end a replay pauses, rather than ending the session. Before `begin`.
    void stay_at_end() { stays_at_end_ = true; }

    /// Sets a fault, as `station_run::set_fault` does. Before `begin`: from the start.
    [[nodiscard]] bool set_fault(const station_fault& fault) { return run_.set_fault(fault); }

    /// Its station and its time, for whoever shows them and works the desk. What is changed counts
    /// from the next `service` on.
    station_run& run() { return run_; }
    step_clock& time() { return time_; }
    /// The segment's, for whoever attaches to it.
    int ident() const { return server_.ident; }
    /// Whether the commands count: false while a commander is missing (`--commander-timeout`).
    bool commanded() const { return commander_.present(); }
    /// Whether it takes its commands from a driver.
    bool replaying() const { return driver_ != nullptr; }
    /// What went wrong with those who follow it, one French line each, in its order.
    const std::vector<std::string>& troubles() const { return troubles_; }
    /// Asks for the end; `words` tell why, in French and one line. The next `service` brings it
    /// about.
    void end(const std::string& words) { end_.ask(words); }

    /// Publishes the first state, prints "ident_mem=" and the identifier on the standard output,
    /// and starts the panel or the command. Throws `refusal`; the session is over then.
    void begin();

    /// Readable when there is something to do before the time is over.
    int descriptor() const { return events_; }
    /// Does what is due, and looks whether the session is over. How long it may be left alone when
    /// the descriptor says nothing. Once it is over nothing changes; those who ask are still
    /// answered, and a command is seen to its end.
    duration service();
    /// Whether it has ended, which `service` finds out.
    bool over() const { return end_.over(); }

    /// After the end: gives the panel or the command what is left of a few seconds since then, and
    /// prints the verdict of its task and the line that sums up. The program's status: 0 for a task
    /// that was fulfilled and 3 for another; without one the command's; 1 when the panel ended by
    /// itself with another one than 0; else 0.
    [[nodiscard]] int finish();

private:
    using moment = step_clock::moment;

    void listen_to(int descriptor) const;
    std::string open_control_socket();
    void begin_run();
    bool take_back();
    void start_child();
    void serve_requests(moment now);
    void make_due_steps();
    bool prepare_step();
    void step();
    void step_without_commands();
    void stop_hurrying();
    void tell_troubles();
    void look_for_the_end();
    void end_with_the_task();
    int status() const;
    void answer_those_who_wait(moment now);
    bool may_rest() const;
    duration rest(moment now) const;
    void wait_for_child();
    void dismiss_command(moment now);

    const session_options& options_;
    message_stream& messages_;
    supervisor supervisor_;  // Forked before the segment is made.
    station_run run_;
    IOsharemem_server server_;
    link_publisher publisher_;
    session_report report_;
    commander commander_;
    step_clock time_;
    session_end end_;
    control_requests requests_;
    std::unique_ptr<control_socket> control_;
    std::unique_ptr<child_process> child_;
    std::vector<session_follower*> followers_;
    session_driver* driver_ = nullptr;
    session_examiner* examiner_ = nullptr;
    std::vector<std::string> troubles_;
    // Until when it hurries, through a pause of its own, and whether it goes on then.
    std::optional<std::int64_t> hurries_to_ms_;
    bool goes_on_ = false;
    // The words of the end at which a replay stays.
    std::optional<std::string> stayed_at_;
    bool stays_at_end_ = false;
    moment ended_at_ = {};
    bool command_dismissed_ = false;
    int events_ = -1;
};

/// Runs a session from `begin` to its end. The program's status.
using session_runner = std::function<int(live_session&)>;

/// The runner that waits by poll.
[[nodiscard]] int run_headless(live_session& session);
