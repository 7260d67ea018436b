#include "recording/recorded_main.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "recording/file_recorder.h"
#include "recording/hidden_faults.h"
#include "recording/input_bytes.h"
#include "recording/played_recording.h"
#include "recording/recorded_text.h"
#include "recording/recording_options.h"
#include "recording/replay.h"
#include "session/failure.h"
#include "session/session_report.h"

namespace {

using recorders = std::vector<std::unique_ptr<file_recorder>>;

/// What was asked for on the command line.
struct request {
    const command_line& line;
    const recordable_station& station;
    const runner_choice& choose_runner;
    recording_options recording = {};
    session_options session = {};
    std::vector<std::string> given = {}, read_files = {};

    bool has(const std::string& option) const {
        return std::ranges::find(given, option) != given.end();
    }
};

void check_exclusions(const request& asked) {
    for (const std::vector<std::string>& words : asked.station.exclusions)
        for (const std::string& other : words)
            if (other != words.front() && asked.has(words.front()) && asked.has(other))
                throw misuse(words.front() + " et " + other + " s'excluent");
}

/// The file that is read, where "-" would be one that is written.
const std::string& path_of_input(const std::string& read) {
    static const std::string standard_input = "/dev/stdin";
    return read == "-" ? standard_input : read;
}

void check_not_read(const std::string& path, const request& asked) {
    const std::string& play = asked.recording.play;
    if (!play.empty() && same_file(path, path_of_input(play)))
        throw refusal(recorded_name(path) + ": c'est l'enregistrement qui est rejoué");
    for (const std::string& each : asked.read_files)
        if (same_file(path, path_of_input(each)))
            throw refusal(recorded_name(path) + ": ce fichier est lu, il reste comme il est");
}

recorders open_recorders(const request& asked, file_backlog backlog) {
    const recording_options& options = asked.recording;
    const struct {
        recording_kind kind;
        const std::string& path;
    } wanted[] = {{recording_kind::csv, options.csv}, {recording_kind::vcd, options.vcd}};
    recorders opened;
    for (const auto& [kind, path] : wanted) {
        if (path.empty()) continue;
        check_not_read(path, asked);
        // The first of them is there now, by whatever name.
        if (!opened.empty() && (path == options.csv || same_file(path, options.csv)))
            throw misuse("--csv et --vcd veulent le même fichier");
        opened.push_back(std::make_unique<file_recorder>(kind, path, backlog));
    }
    return opened;
}

/// The program's own runner, behind what a session needs to be recorded. The files are opened once
/// nothing else can refuse, and before any segment exists.
runner_choice recorded(const request& asked, recorders& files,
                       const std::function<void(live_session&)>& prepare) {
    return [&asked, &files, prepare](station_model& model,
                                     const session_options& options) -> session_runner {
        const session_runner run =
            asked.choose_runner ? asked.choose_runner(model, options) : run_headless;
        files = open_recorders(asked, file_backlog::is_cut);
        return [&files, run, prepare](live_session& session) {
            for (const auto& each : files) session.add_follower(*each);
            prepare(session);
            return run(session);
        };
    };
}

int record(const request& asked) {
    const std::unique_ptr<station_model> model = asked.station.make();
    recorders files;
    const auto prepare = [&](live_session& session) {
        for (const auto& each : files) session.add_reader(*each);
    };
    return serve_station(*model, asked.session, asked.line.program,
                         recorded(asked, files, prepare));
}

/// The time of a recording's last row; nothing of one that can be read only once. Read to its end,
/// a file that is no recording is refused before anything is served.
std::optional<std::int64_t> length_of(const std::string& path) {
    if (!std::filesystem::is_regular_file(path)) return std::nullopt;
    input_bytes bytes(path);
    recording_reader recording(path, bytes);
    std::int64_t ms = 0;
    while (recording.peek()) ms = recording.take().ms;
    return ms;
}

/// A replay that is shown: served on the link, at a pace, and with a window where there is one.
int show(const request& asked, station_model& model, playback& played) {
    recorders files;
    played.set_length(length_of(asked.recording.play));
    const auto prepare = [&](live_session& session) {
        for (const auto& each : files) played.add_reader(*each);
        session.take_from(played);
        session.add_reader(played);
        session.add_follower(played);
        if (asked.recording.at_s) session.go_to(std::llround(*asked.recording.at_s * 1000));
    };
    const int status =
        serve_station(model, asked.session, asked.line.program, recorded(asked, files, prepare));
    return played.difference().empty() ? status : static_cast<int>(exit_status::refused);
}

/// Steps to the recording's end, or to the first difference.
void run_through(station_run& run, playback& played) {
    while (played.difference().empty()) {
        if (const auto why = played.before_step(run)) return run.finish(*why);
        run.step([&](int output) { return played.command(output); });
    }
}

/// A replay that nobody watches, as fast as it can be.
int run_again(const request& asked, station_model& model, playback& played) {
    const recorders files = open_recorders(asked, file_backlog::waits);
    message_stream messages(asked.line.program);
    station_run run(model);
    run.add_reader(played);
    for (const auto& each : files) played.add_reader(*each);
    played.before_begin(run);
    run.begin(played.title());
    for (const auto& each : files) each->begin();
    run_through(run, played);
    std::string trouble = played.trouble();
    for (const auto& each : files) {
        each->finish();
        if (trouble.empty()) trouble = each->trouble();
    }
    if (!trouble.empty()) throw refusal(trouble);
    messages.line(summary_of(run));
    return static_cast<int>(exit_status::done);
}

std::unique_ptr<station_model> remade(const request& asked, const recording_reader& recording) {
    try {
        return asked.station.remake(recording.head().facts);
    } catch (const failure& problem) {
        throw refusal(recorded_name(recording.name() + ": " + problem.why));
    }
}

std::optional<std::vector<station_fault>> known_hidden_faults(const request& asked) {
    return asked.station.hidden_faults ? asked.station.hidden_faults() : std::nullopt;
}

/// The faults that the recorded session hid: as the file's end tells them, else as the program
/// knows them. A pipe's end cannot be read ahead.
std::vector<station_fault> hidden_faults(const request& asked, const recording_reader& recording) {
    const std::size_t announced = announced_hidden_faults(recording.head());
    const std::string& path = asked.recording.play;
    if (announced == 0) return {};
    if (std::filesystem::is_regular_file(path)) {
        input_bytes bytes(path);
        recording_reader ahead(path, bytes);
        std::vector<station_fault> told = told_hidden_faults(ahead);
        if (told.size() == announced) return told;
    }
    if (const auto known = known_hidden_faults(asked)) {
        if (known->size() == announced) return *known;
        throw refusal(recorded_name(path) + ": pannes cachées: " + std::to_string(announced) +
                      " dans l'enregistrement, " + std::to_string(known->size()) +
                      " dans l'exercice");
    }
    throw refusal(recorded_name(path) +
                  ": ses pannes cachées manquent, qu'un --exercise peut donner");
}

int play(const request& asked) {
    input_bytes bytes(asked.recording.play);
    recording_reader recording(asked.recording.play, bytes);
    const auto go = asked.session.headless && !asked.has("--speed") ? run_again : show;
    if (recording.head().station == asked.station.name) {
        const std::unique_ptr<station_model> model = remade(asked, recording);
        replay again(recording);
        again.hide(hidden_faults(asked, recording));
        return go(asked, *model, again);
    }
    played_recording shown(recording);
    return go(asked, shown, shown);
}

}  // namespace

int recorded_station_main(int argc, char** argv, command_line line,
                          const recordable_station& station, const runner_choice& choose_runner) {
    return program_main(line.program, closed_stream::swallows, [&] {
        request asked{line, station, choose_runner};
        add_recording_options(line, asked.recording);
        add_session_options(line, asked.session);
        const command_words words = read_command_line(line, {argv + 1, argv + argc});
        if (words.answer) {
            print_at_once(*words.answer);
            return static_cast<int>(exit_status::done);
        }
        asked.given = words.given;
        check_exclusions(asked);
        check_together(asked.session);
        check_together(asked.recording, asked.given, station.set_up);
        asked.session.output_is_taken = asked.recording.csv == "-" || asked.recording.vcd == "-";
        if (station.read_files) asked.read_files = station.read_files();
        return asked.recording.play.empty() ? record(asked) : play(asked);
    });
}
