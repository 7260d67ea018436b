#include "programs/quorin_io/record.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <limits>

#include "ioshare/io_clocks.h"
#include "ioshare/io_printable.h"
#include "programs/quorin_io/link_commands.h"
#include "programs/quorin_io/waiting.h"
#include "recording/background_file.h"
#include "recording/file_recorder.h"
#include "session/failure.h"
#include "session/messages.h"

namespace {

// The signal that asked for the end; 0 as long as none did.
std::atomic<int> ending_signal = 0;

void catch_signals() {
    struct sigaction action {};
    action.sa_handler = [](int number) {
        int none = 0;
        ending_signal.compare_exchange_strong(none, number);
    };
    for (const int number : {SIGINT, SIGTERM}) sigaction(number, &action, nullptr);
    struct sigaction hangup {};
    sigaction(SIGHUP, nullptr, &hangup);
    if (hangup.sa_handler != SIG_IGN) sigaction(SIGHUP, &action, nullptr);
    signal(SIGPIPE, SIG_IGN);
}

std::string words_of_the_end(int signal) {
    if (signal == 0) return "session terminée";
    if (signal == SIGINT) return "enregistrement arrêté";
    return "enregistrement arrêté (signal " + std::to_string(signal) + ")";
}

/// Looks until the values rest under a clock that stands: a simulator that is in the middle of
/// writing its next publication goes on, or waits for the link's lock, which is tried every 0.2 ms.
/// One that never rests is taken as it is.
void look_at_a_publication(io_observer& segment) {
    constexpr int tries = 10;
    constexpr unsigned rest_us = 300;
    for (int i = 0; i < tries; ++i) {
        const std::int64_t before = segment.publication();
        usleep(rest_us);
        if (!segment.look() && segment.publication() == before) return;
    }
}

class link_recorder {
public:
    /// Opens the file.
    link_recorder(io_observer& segment, recording_kind kind, const std::string& path)
        : segment_(segment), path_(path), file_(kind, path, file_backlog::is_cut) {}

    void begin();
    /// Records to the end. The signal that asked for it, or 0.
    int run();
    void finish(const std::string& words);

private:
    void look();
    void tell_changes();
    station_event event_of(std::size_t place, std::int64_t ms) const;
    std::int64_t ms() const { return static_cast<std::int64_t>(since_.seconds() * 1000); }
    void pause() const;
    void tell_troubles();

    io_observer& segment_;
    const std::string path_;
    file_recorder file_;
    message_stream messages_{"quorin-io"};
    stopwatch since_;
    // As they were told, in the segment's order.
    std::vector<std::int32_t> told_;
    std::int64_t publication_ = -1, skipped_ = 0;
};

station_event link_recorder::event_of(std::size_t place, std::int64_t ms) const {
    const io_signal& signal = segment_.signals()[place];
    const bool input = signal.direction == io_direction::input;
    const auto inputs =
        std::ranges::count(segment_.signals(), io_direction::input, &io_signal::direction);
    const auto index = static_cast<int>(place) - (input ? 0 : static_cast<int>(inputs));
    return {ms,   input ? event_kind::input : event_kind::output, signal.name, signal.value, {},
            index};
}

void link_recorder::begin() {
    segment_.look();
    look_at_a_publication(segment_);
    publication_ = segment_.publication();
    since_ = {};
    std::vector<station_event> block = {{0, event_kind::session, "format", 1, {}},
                                        {0, event_kind::session, "station", 0, "inconnue"}};
    for (std::size_t i = 0; i < segment_.signals().size(); ++i) {
        block.push_back(event_of(i, 0));
        told_.push_back(segment_.signals()[i].value);
    }
    file_.read(block);
    file_.begin();
}

int link_recorder::run() {
    int signal = 0;
    for (bool over = false; !over;) {
        pause();
        // The end is looked for first, so that the last changes are told.
        signal = ending_signal;
        over = signal != 0 || segment_.session_over();
        look();
        tell_troubles();
    }
    return signal;
}

void link_recorder::look() {
    segment_.look();
    if (segment_.publication() != publication_) look_at_a_publication(segment_);
    tell_changes();
    // Beyond the one that was taken.
    const std::int64_t missed = io_publications_since(publication_, segment_.publication()) - 1;
    const std::int64_t room = std::numeric_limits<std::int64_t>::max() - skipped_;
    skipped_ += std::clamp<std::int64_t>(missed, 0, room);
    publication_ = segment_.publication();
}

// Inputs that differ under the same clock are not published yet: to the link's clients they are as
// they were.
void link_recorder::tell_changes() {
    const bool published = segment_.publication() != publication_;
    const std::int64_t now_ms = ms();
    std::vector<station_event> changes;
    for (std::size_t i = 0; i < told_.size(); ++i) {
        const io_signal& signal = segment_.signals()[i];
        if (signal.value == told_[i]) continue;
        if (signal.direction == io_direction::input && !published) continue;
        told_[i] = signal.value;
        changes.push_back(event_of(i, now_ms));
    }
    file_.read(changes);
}

void link_recorder::pause() const {
    if (is_standard_output(path_))
        pause_between_printed_looks();
    else
        pause_between_looks();
}

void link_recorder::tell_troubles() {
    const std::string trouble = file_.trouble();
    if (file_.failed()) {
        if (is_standard_output(path_)) throw output_refusal();
        throw refusal(trouble.empty() ? path_ + ": la suite n'est pas enregistrée" : trouble);
    }
    if (!trouble.empty()) messages_.say(trouble);
}

void link_recorder::finish(const std::string& words) {
    const station_event end[] = {{ms(), event_kind::session, "fin", 0, words}};
    file_.read(end);
    file_.finish();
    tell_troubles();
    if (skipped_ > 0)
        messages_.say("publications passées entre deux regards: " + std::to_string(skipped_));
}

}  // namespace

recording_kind kind_of_recording(const io_request& asked) {
    const std::string& file = asked.operands.front();
    if (file.empty()) throw misuse("le nom du fichier est vide");
    if (asked.given(option_key::format))
        return *recording_kind_called(asked.of(option_key::format).front());
    const std::size_t dot = file.rfind('.');
    const auto kind =
        dot == std::string::npos ? std::nullopt : recording_kind_called(file.substr(dot + 1));
    if (!kind) throw misuse(io_printable(file) + ": --format csv ou --format vcd est attendu");
    return *kind;
}

void record_link(io_observer& segment, const io_request& asked) {
    link_recorder recorder(segment, kind_of_recording(asked), asked.operands.front());
    refuse_after_the_end(segment);
    catch_signals();
    recorder.begin();
    const int signal = recorder.run();
    recorder.finish(words_of_the_end(signal));
    // A signal's own status, with nothing left to be done.
    if (signal != 0 && signal != SIGINT) _exit(128 + signal);
}
