// The display dies under a window, at any moment: the station ends with a line and status 1, and
// whoever is on the link is told.
//
//     build/release/bin/soak_display 1000
#include "bench/soak/attack.h"
#include "tests/support/runtime_folder.h"
#include "tests/support/station.h"

#include "tests/support/mortal_display.h"

namespace {

struct counts {
    long before = 0, under = 0;
    double slowest_s = 0;
};

const std::vector<std::vector<std::string>> windows = {
    {"--no-panel"},
    {"--no-panel", "--speed", "100"},
    {"--no-panel", "--exercise", "01_premiere_commande"},
    {"--no-panel", "--manual"},
    {}};

/// What the station may say: its display was gone before its window was there, or went later.
bool is_told(const std::string& said, counts& counted) {
    const bool under = said.find("zk4sim: l'écran a disparu\n") != std::string::npos;
    const bool before = said.find("ne répond pas: --headless") != std::string::npos ||
                        said.find("Can't open display: ") != std::string::npos;
    counted.under += under;
    counted.before += before && !under;
    return under || before || said.find("zk4sim: panneau terminé (statut 1)") != std::string::npos;
}

void round(attack& run, counts& counted) {
    mortal_display display;
    std::vector<std::string> command = {built("zk4sim")};
    const auto& options = windows[run.below(windows.size())];
    command.insert(command.end(), options.begin(), options.end());
    program station(command, {"DISPLAY=" + display.name});
    usleep(static_cast<useconds_t>(run.below(run.one_in(2) ? 150'000 : 800'000)));
    const attached_segment segment(printed_ident(station));
    for (int i = 0; segment && i < segment->nb_outputs; ++i) segment->output_values[i] = 1;
    usleep(static_cast<useconds_t>(run.below(100'000)));
    const auto from = std::chrono::steady_clock::now();
    display.die();
    const std::optional<int> status = station.wait(seconds(20));
    counted.slowest_s = std::max(counted.slowest_s, seconds_since(from));
    const std::string said = station.err();
    const bool exercise = status == 3 && said.find("écran a disparu") != std::string::npos;
    if (status != 1 && !exercise)
        run.find("status " + std::to_string(status.value_or(-1)) + ": " + said);
    if (!is_told(said, counted)) run.find("not told: " + said);
    if (segment && !segment.session_over()) run.find("the link is not told");
    if (!wait_until([] { return leftovers::processes().empty(); }, seconds(10)))
        run.find("somebody is left");
    ++run.done;
}

}  // namespace

int main(int argc, char** argv) {
    attack run("display", argc, argv, 1000);
    const runtime_folder runtime;
    counts counted;
    while (run.goes_on()) round(run, counted);
    return run.finish("displays killed", std::to_string(counted.under) + " under a window, " +
                                             std::to_string(counted.before) +
                                             " before it, the end after " +
                                             std::to_string(counted.slowest_s) + " s at most");
}
