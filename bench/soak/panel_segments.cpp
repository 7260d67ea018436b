// The panel itself on segments that no simulator makes: each is shown by a program of its own,
// while a hand goes on writing there. Several at a time, as a panel sleeps most of the time.
//
//     tools/with_display build/asan/bin/soak_panel_segments 10000
#include <sys/wait.h>

#include <csignal>
#include <list>

#include "bench/soak/hostile_segment.h"
#include "tests/support/programs.h"

namespace {

constexpr std::size_t at_once = 8;

/// A panel and its segment.
struct watched_panel {
    explicit watched_panel(attack& run)
        : segment(run),
          panel({built("quorin"), "-automemlink", std::to_string(segment.ident())}),
          looks(2 + run.below(6)) {
        segment.open_lock();
    }
    hostile_segment segment;
    program panel;
    /// How many more times its bytes are changed before it is asked to end.
    std::size_t looks;
};

struct ends {
    long refused = 0, shown = 0;
};

/// It may refuse the segment, end by itself, or end when it is asked to.
void judge(attack& run, program& panel, ends& counted) {
    const std::optional<int> status = panel.wait(seconds(20));
    const std::string said = panel.err();
    const bool refused = status == 1 && said.find("IOshare: ") != std::string::npos;
    const bool asked = status == 128 + SIGTERM || status == 0;
    if (!status) panel.signal(SIGKILL);
    if (!refused && !asked)
        run.find("status " + std::to_string(status.value_or(-1)) + ": " + said.substr(0, 3000));
    ++(refused ? counted.refused : counted.shown);
}

void look_after(attack& run, std::list<watched_panel>& all, ends& counted) {
    for (auto each = all.begin(); each != all.end();) {
        const auto next = std::next(each);
        if (each->panel.running() && each->looks-- > 0) {
            each->segment.disturb(run);
            each->segment.open_lock();
        } else {
            each->panel.signal(SIGTERM);
            judge(run, each->panel, counted);
            all.erase(each);
            ++run.done;
        }
        each = next;
    }
}

}  // namespace

int main(int argc, char** argv) {
    attack run("panel_segments", argc, argv, 10'000);
    ends counted;
    std::list<watched_panel> all;
    for (long started = 0; run.goes_on(); usleep(60'000)) {
        while (all.size() < at_once && started < run.wanted && ++started) all.emplace_back(run);
        look_after(run, all, counted);
    }
    return run.finish("segments", std::to_string(counted.refused) + " refused by a panel, " +
                                      std::to_string(counted.shown) + " shown");
}
