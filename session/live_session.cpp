#include "session/live_session.h"

#include <poll.h>
#include <sys/epoll.h>
#include <unistd.h>

#include <algorithm>

#include "session/end_signals.h"
#include "session/system_errors.h"

namespace {

using steady = std::chrono::steady_clock;

// How long the steps of one call may keep the rest waiting.
constexpr auto most_at_once = std::chrono::milliseconds(5);
constexpr auto farewell = std::chrono::seconds(3);
constexpr int farewell_look_ms = 100;
constexpr char task_is_over[] = "exercice terminé";
// Also in a pause, an end that somebody else wrote into the segment is noticed.
constexpr auto longest_rest = std::chrono::milliseconds(500);

}  // namespace

live_session::live_session(station_model& model, const session_options& options,
                           message_stream& messages)
    : options_(options),
      messages_(messages),
      supervisor_(messages.program()),
      run_(model),
      server_(make_station_server(model.inputs(), model.outputs())),
      publisher_(server_),
      commander_(server_.ident, options.commander_timeout_s),
      time_(options.speed, options.paused, steady::now()),
      end_(options.duration_s, supervisor_, *server_.segment),
      requests_(run_, time_, options),
      events_(or_refuse(epoll_create1(EPOLL_CLOEXEC), "session")) {
    run_.add_reader(publisher_);
    run_.add_reader(report_);
}

live_session::~live_session() { close(events_); }

void live_session::take_from(session_driver& driver) {
    driver_ = &driver;
    requests_.refuse_changes("un rejeu est en cours");
}

void live_session::set_examiner(session_examiner& examiner) {
    examiner_ = &examiner;
    run_.set_examiner(examiner);
    requests_.set_examiner(examiner);
}

std::optional<std::int64_t> live_session::replay_length_ms() const {
    return driver_ ? driver_->length_ms() : std::nullopt;
}

bool live_session::go_to(std::int64_t ms) {
    if (!driver_ || (ms < run_.ms() && !take_back())) return false;
    if (!hurries_to_ms_) goes_on_ = !time_.paused();
    hurries_to_ms_ = ms;
    time_.pause();
    time_.run((ms - run_.ms() + step_ms - 1) / step_ms);
    stop_hurrying();
    return true;
}

// The driver first: it is the one that may be unable to.
bool live_session::take_back() {
    try {
        if (!driver_->restart() || !run_.restart()) return false;
        begin_run();
    } catch (const failure& why) {
        end_.ask(why.why);
        return false;
    }
    stayed_at_.reset();
    return true;
}

void live_session::stop_hurrying() {
    if (!hurries_to_ms_ || run_.ms() < *hurries_to_ms_) return;
    hurries_to_ms_.reset();
    if (goes_on_) time_.resume(steady::now());
}

void live_session::begin_run() {
    if (driver_) driver_->before_begin(run_);
    run_.begin(title());
    end_with_the_task();
}

void live_session::begin() {
    if (!supervisor_.watch(server_.ident) && !end_signals::due())
        throw refusal("le processus de garde ne répond pas");
    end_signals::announce_on(*server_.segment);
    end_signals::depend_on(supervisor_.id());
    listen_to(end_signals::descriptor());
    begin_run();
    const std::string trouble = open_control_socket();
    try {
        print_at_once("ident_mem=" + std::to_string(server_.ident) + "\n",
                      options_.output_is_taken ? STDERR_FILENO : STDOUT_FILENO);
        if (!trouble.empty()) messages_.say(trouble);
        if (!end_signals::due()) start_child();
        for (session_follower* const each : followers_) each->begin();
    } catch (const failure&) {
        server_.sharing_terminate();
        throw;
    }
}

void live_session::listen_to(int descriptor) const {
    epoll_event wanted{};
    wanted.events = EPOLLIN;
    epoll_ctl(events_, EPOLL_CTL_ADD, descriptor, &wanted);
}

// What went wrong; empty: nothing.
std::string live_session::open_control_socket() {
    try {
        control_ = std::make_unique<control_socket>(server_.ident);
        listen_to(control_->descriptor());
    } catch (const failure& why) {
        return why.why;
    }
    return {};
}

void live_session::start_child() {
    if (!options_.command.empty()) {
        child_ = std::make_unique<child_process>("commande",
                                                 shell_command(options_.command, server_.ident));
        end_.depend_on(*child_, "commande terminée", "commande terminée");
    } else if (!options_.no_panel) {
        child_ = std::make_unique<child_process>("panneau",
                                                 panel_command(options_.panel, server_.ident));
        end_.depend_on(*child_, "panneau terminé", "panneau fermé");
    }
}

live_session::duration live_session::service() {
    end_signals::settle();
    serve_requests(steady::now());
    if (!over() && commander_.found_missing(steady::now()))
        messages_.say("aucun client depuis trop longtemps: les commandes valent 0");
    make_due_steps();
    look_for_the_end();
    tell_troubles();
    answer_those_who_wait(steady::now());
    if (over()) {
        dismiss_command(steady::now());
        return duration::zero();
    }
    return rest(steady::now());
}

void live_session::serve_requests(moment now) {
    if (!control_) return;
    control_->service(now, [this, now](const std::string& request) {
        answer_those_who_wait(now);  // As the request before left it.
        return requests_.carry_out(request, over());
    });
}

void live_session::make_due_steps() {
    const moment start = steady::now();
    for (moment now = start; !over() && !end_.due(run_.ms()) && time_.due(now);
         now = steady::now()) {
        if (!prepare_step()) return;
        step();
        time_.stepped();
        stop_hurrying();
        if (now - start > most_at_once) return;
    }
}

// Whether there is a step to make: a driver may have come to its end.
bool live_session::prepare_step() {
    const auto why = driver_ ? driver_->before_step(run_) : std::nullopt;
    if (!why) return true;
    if (!stays_at_end_) end_.ask(*why);
    stayed_at_ = why;
    hurries_to_ms_.reset();
    time_.pause();
    time_.run(0);
    return false;
}

void live_session::step() {
    const bool commanded = commander_.present();
    run_.step([&](int output) {
        if (driver_) return driver_->command(output);
        return commanded ? server_.output_value(output) : 0;
    });
    end_with_the_task();
    report_.print(messages_);
}

void live_session::end_with_the_task() {
    if (examiner_ && examiner_->over()) end_.ask(task_is_over);
}

// A station whose commander is gone stops.
void live_session::step_without_commands() {
    run_.step([](int) { return 0; });
    report_.print(messages_);
}

void live_session::tell_troubles() {
    for (session_follower* const each : followers_) {
        const std::string why = each->trouble();
        if (why.empty()) continue;
        messages_.say(why);
        troubles_.push_back(why);
    }
}

void live_session::look_for_the_end() {
    if (over() || !end_.look(run_.ms())) return;
    server_.sharing_terminate();
    ended_at_ = steady::now();
    // The end came first: the commander may have died with the lock, and the step would wait for
    // it.
    if (end_.child_gone() && !driver_) step_without_commands();
    run_.finish(stayed_at_.value_or(end_.words()));
    messages_.say(end_.words());
}

void live_session::answer_those_who_wait(moment now) {
    if (!control_ || !control_->anybody_waiting()) return;
    if (const auto answer = requests_.later_answer(over())) control_->answer_waiting(now, *answer);
}

// Only quorin's own pass is known to leave a command standing for longer than such a rest.
bool live_session::may_rest() const {
    const bool panel = child_ && options_.command.empty() && options_.panel.empty();
    return run_.resting() && held_by_no_more_than(server_.ident, panel ? 1 : 0);
}

live_session::duration live_session::rest(moment now) const {
    const auto steps = may_rest() ? time_.until_several_due(now) : time_.until_due(now);
    duration least = std::min<duration>(steps.value_or(longest_rest), longest_rest);
    const auto deadline = control_ ? control_->next_deadline() : std::nullopt;
    if (deadline) least = std::min(least, *deadline - now);
    if (const auto look = commander_.rest()) least = std::min<duration>(least, *look);
    return std::max(least, duration::zero());
}

void live_session::wait_for_child() {
    if (!child_) return;
    for (const moment last = ended_at_ + farewell; !child_->ended() && steady::now() < last;) {
        pollfd wanted{events_, POLLIN, 0};
        poll(&wanted, 1, farewell_look_ms);
        service();
    }
    dismiss_command(steady::now());
}

// It is told of the end, and ended by force when it goes on all the same.
void live_session::dismiss_command(moment now) {
    if (options_.command.empty() || !child_ || child_->ended()) return;
    if (!command_dismissed_) child_->ask_to_end();
    command_dismissed_ = true;
    if (now - ended_at_ >= farewell) child_->end_by_force();
}

bool live_session::ended_with_task() const { return end_.words() == task_is_over; }

int live_session::finish() {
    wait_for_child();
    for (session_follower* const each : followers_) each->finish();
    tell_troubles();
    if (examiner_)
        for (const std::string& each : examiner_->verdict()) messages_.line(each);
    messages_.line(summary_of(run_));
    return status();
}

int live_session::status() const {
    if (examiner_)
        return static_cast<int>(examiner_->passed() ? exit_status::done : exit_status::not_reached);
    if (!child_ || !child_->ended()) return 0;
    if (!options_.command.empty()) return child_->status();
    return child_->ended_by_itself() && child_->status() != 0 ? 1 : 0;
}
