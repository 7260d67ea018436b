// kill -9 of every program in every state, at any moment: nobody hangs, nothing is left behind, and
// the next start works at the first try.
//
//     tools/with_display build/release/bin/soak_kill 30000
//     tools/with_display build/release/bin/soak_kill 100 1 marked   # seed 1, states called so
#include <sys/shm.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <map>
#include <memory>
#include <sstream>

#include "bench/soak/attack.h"
#include "tests/support/runtime_folder.h"
#include "tests/support/screen.h"
#include "tests/support/station.h"

namespace {

using words = std::vector<std::string>;

/// What a station is doing, and who is beside it. `$file` is a recording, `$ident` the session's;
/// `$file.names` has names for inputs set by hand, `$file.toml` an exercise of a second.
struct state_row {
    const char* name;
    words station;
    std::vector<words> beside;
};

const words headless = {"zk4sim", "--headless", "--no-panel", "--speed", "20"};
const std::string reference = QUORIN_SOURCE "/tests/lesson/01_premiere_commande/reference.csv",
                  two_of_a_class = QUORIN_SOURCE "/tests/lesson/08_cadence/";
constexpr char names[] = "porte\nniveau\n\nPOMPE\nVANNE\n";
constexpr char brief[] =
    "format = 1\ntitre = \"T\"\nenonce = \"E\"\n[station]\nduree_s = 1\n"
    "[[but]]\ntexte = \"B\"\nquand = [\"te=1\"]\n";
/// A class is marked again and again while the session lives, what it records itself included.
const words marking = {"sh", "-c",
                       "while quorin-io $ident status >/dev/null; do quorin-lesson mark "
                       "01_premiere_commande " +
                           reference + " $file.csv --csv $file.table --pdf $file.pdf; done"};

// clang-format off
const state_row states[] = {
    {"serving",    headless, {}},
    {"panel",      {"zk4sim", "--headless", "--speed", "20"}, {}},
    {"window",     {"zk4sim", "--no-panel"}, {}},
    {"window and panel", {"zk4sim"}, {}},
    {"command",    {"zk4sim", "--headless", "--exec", "quorin-io watch"}, {}},
    {"paused",     {"zk4sim", "--headless", "--no-panel", "--paused"}, {}},
    {"stepping",   {"zk4sim", "--headless", "--no-panel", "--paused"}, {{"quorin-io", "$ident", "step", "100000"}}},
    {"recording",  {"zk4sim", "--headless", "--no-panel", "--speed", "100", "--fault", "te=flicker", "--csv", "$file.csv", "--vcd", "$file.vcd"}, {}},
    {"replaying",  {"zk4sim", "--headless", "--no-panel", "--speed", "10", "--play", reference}, {}},
    {"exercise",   {"zk4sim", "--headless", "--no-panel", "--exercise", "01_premiere_commande"}, {}},
    {"verdict",    {"zk4sim", "--no-panel", "--speed", "20", "--exercise", "$file.toml"}, {}},
    {"marked",     {"zk4sim", "--headless", "--no-panel", "--exercise", "01_premiere_commande", "--csv", "$file.csv"}, {marking}},
    {"marked at length", headless, {{"quorin-lesson", "mark", "08_cadence", two_of_a_class + "reference.csv", two_of_a_class + "trop_lent.csv", "--csv", "$file.table", "--pdf", "$file.pdf"}}},
    {"by hand",    {"zk4sim", "--headless", "--no-panel", "--manual", "--names", "$file.names", "--csv", "$file.csv"}, {{"quorin-io", "$ident", "watch"}}},
    {"by hand, panel", {"zk4sim", "--headless", "--manual"}, {}},
    {"by hand, window", {"zk4sim", "--manual", "--names", "$file.names"}, {{"quorin-io", "$ident", "record", "$file.vcd"}}},
    {"watched",    headless, {{"quorin-io", "$ident", "watch"}, {"quorin-io", "$ident", "wait", "te=7"}}},
    {"recorded from outside", headless, {{"quorin-io", "$ident", "record", "$file.csv"}}},
    {"pulsed",     headless, {{"quorin-io", "$ident", "pulse", "MT", "--for", "60"}}},
    {"bridge",     headless, {{"quorin-modbus", "$ident", "--control", "--port", "$port"}}},
    {"reading bridge", headless, {{"quorin-modbus", "$ident", "--port", "$port"}}},
    {"all",        {"zk4sim", "--csv", "$file.csv"}, {{"quorin-modbus", "$ident", "--control", "--port", "$port"}, {"quorin-io", "$ident", "watch"}}},
};
// clang-format on

enum class phase { starting, running, locked, ending, count };
constexpr const char* phases[] = {"starting", "running", "locked", "ending"};

class killer {
public:
    killer(attack& run, const std::string& wanted)
        : run_(run), port_(30'000 + static_cast<int>(run.below(20'000))) {
        std::filesystem::create_directory(temporary_);
        write_bytes(files_ / "a.names", names);
        write_bytes(files_ / "a.toml", brief);
        for (const state_row& each : states)
            if (std::string(each.name).starts_with(wanted)) states_.push_back(&each);
    }

    bool can_begin() const { return !states_.empty(); }
    void round();
    std::string figures() const {
        std::ostringstream all;
        for (const auto& [name, count] : killed_) all << name << " " << count << ", ";
        all << "all gone after " << slowest_s_ << " s at most";
        return all.str();
    }

private:
    std::unique_ptr<program> start(words command, const std::string& ident);
    void sleep_at_random(double most_ms) {
        usleep(static_cast<useconds_t>(run_.random() % 1000 * most_ms));
    }
    void kill_one(const program& station);
    void let_all_end(program& station);
    void look_for_leftovers();
    void look_at_recording();
    void look_at_documents();
    void find(const std::string& what) { run_.find(what + " (" + at_ + ")"); }

    attack& run_;
    const runtime_folder runtime_;
    const temporary_folder files_{"quorin_soak_"};
    const std::filesystem::path temporary_ = files_ / "tmp";
    screen display_;
    int port_;
    std::vector<const state_row*> states_;
    std::string at_;
    std::map<std::string, long> killed_;
    double slowest_s_ = 0;
};

std::string name_of(pid_t pid) {
    std::string name = bytes_of("/proc/" + std::to_string(pid) + "/comm");
    if (!name.empty()) name.pop_back();
    return name;
}

std::unique_ptr<program> killer::start(words command, const std::string& ident) {
    const std::pair<std::string, std::string> meant[] = {
        {"$file", files_ / "a"}, {"$ident", ident}, {"$port", std::to_string(port_)}};
    if (command[0] != "sh") command[0] = built(command[0]);
    for (std::string& word : command)
        for (const auto& [name, value] : meant)
            for (std::size_t at; (at = word.find(name)) != std::string::npos;)
                word.replace(at, name.size(), value);
    // A program that looks for leaks has a helper by its own name, and waits for ever for one that
    // was killed.
    return std::make_unique<program>(
        command, words{"TMPDIR=" + temporary_.string(), "ASAN_OPTIONS=detect_leaks=0",
                       "PATH=" QUORIN_PROGRAMS ":" + std::string(std::getenv("PATH"))});
}

/// Any process that the round has started, by itself or through another. One that has not become
/// its program yet is not among those that are found by their mark.
void killer::kill_one(const program& station) {
    std::set<pid_t> all = leftovers::processes();
    if (all.empty()) all.insert(station.id());
    const pid_t victim =
        *std::next(all.begin(), static_cast<std::ptrdiff_t>(run_.below(all.size())));
    const std::string name = name_of(victim);
    at_ += ", " + name;
    ++killed_[name];
    ++run_.done;
    kill(victim, SIGKILL);
}

/// Whoever is left ends once the station is asked to; a panel says so, and waits for its user.
void killer::let_all_end(program& station) {
    const auto from = std::chrono::steady_clock::now();
    const bool gone = wait_until(
        [&] {
            if (station.running()) station.signal(SIGTERM);
            const std::vector<x_window> all = display_.windows();
            if (!all.empty()) {
                display_.give_focus(all.back());
                display_.key(XK_Return);
            }
            return leftovers::no_process();
        },
        seconds(30));
    slowest_s_ = std::max(slowest_s_, seconds_since(from));
    if (gone) return;
    for (const pid_t each : leftovers::processes()) {
        find("still there: " + name_of(each));
        kill(each, SIGKILL);
    }
}

void killer::look_for_leftovers() {
    if (!wait_until([] { return leftovers::segments().empty(); }, seconds(5))) {
        find("a segment is left");
        for (const int each : leftovers::segments()) shmctl(each, IPC_RMID, nullptr);
    }
    std::error_code none;
    for (const auto& folder : {runtime_.path / "quorin", temporary_})
        for (const auto& each : std::filesystem::directory_iterator(folder, none)) {
            find("left in its folder: " + each.path().string());
            std::filesystem::remove_all(each.path());
        }
}

/// What was kept of the session can be replayed, its last row apart.
void killer::look_at_recording() {
    constexpr std::uintmax_t first_block = 4096;
    const std::filesystem::path file = files_ / "a.csv";
    std::error_code none;
    if (std::filesystem::file_size(file, none) > first_block && !none) {
        const outcome replay = run_program({built("zk4sim"), "--headless", "--play", file});
        if (replay.status != 0) find("its recording is none: " + replay.err);
    }
    std::filesystem::remove(file, none);
}

/// The table and the report of two recordings are whole or not there, and nothing else is beside
/// them; every other time they are made anew.
void killer::look_at_documents() {
    const std::string table = bytes_of(files_ / "a.table"), report = bytes_of(files_ / "a.pdf");
    if (!table.empty() && std::ranges::count(table, '\n') != 3) find("half a table: " + table);
    if (!report.empty() && !report.ends_with("%%EOF\n")) find("half a report");
    if (run_.one_in(2))
        for (const char* const each : {"a.table", "a.pdf"}) std::filesystem::remove(files_ / each);
    for (const auto& each : std::filesystem::directory_iterator(files_.path()))
        if (each != temporary_ && !each.path().filename().string().starts_with("a.")) {
            find("left beside the recordings: " + each.path().string());
            std::filesystem::remove(each.path());
        }
}

void killer::round() {
    const state_row& state = *states_[run_.below(states_.size())];
    const auto when = static_cast<phase>(run_.below(static_cast<std::size_t>(phase::count)));
    at_ = std::string(state.name) + ", " + phases[static_cast<std::size_t>(when)];
    display_.retire_window_ids();
    ++port_;
    const auto station = start(state.station, "");
    std::vector<std::unique_ptr<program>> beside;
    if (when == phase::starting) {
        sleep_at_random(40);
    } else {
        const std::string ident = wait_for_ident(*station);
        if (ident.empty()) find("did not start: " + station->err());
        for (const words& each : state.beside) beside.push_back(start(each, ident));
        const attached_segment segment(ident);
        for (int i = 0; segment && i < segment->nb_outputs; ++i) segment->output_values[i] = 1;
        sleep_at_random(run_.one_in(2) ? 300 : 30);
        if (when == phase::ending) station->signal(SIGTERM);
        if (when == phase::ending) sleep_at_random(20);
        const bool locked =
            when == phase::locked && segment &&
            wait_until([&] { return sem_trywait(&segment->lock) == 0; }, seconds(1));
        if (!leftovers::processes().empty() || when != phase::ending) kill_one(*station);
        if (locked) sleep_at_random(20);
        if (locked) sem_post(&segment->lock);
    }
    if (when == phase::starting) kill_one(*station);
    sleep_at_random(run_.one_in(2) ? 100 : 10);
    let_all_end(*station);
    beside.clear();
    look_for_leftovers();
    look_at_recording();
    look_at_documents();
}

}  // namespace

int main(int argc, char** argv) {
    attack run("kill", argc, argv, 30'000);
    killer rounds(run, argc > 3 ? argv[3] : "");
    if (!rounds.can_begin()) return 2;
    while (run.goes_on()) rounds.round();
    return run.finish("kills", rounds.figures());
}
