// A script that only steps is exact, however busy the machine is: it glues, fits and presses five
// bases, and spills some glue, a hundred times.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>

#include "ioshare/io_slots.h"
#include "session/station_model.h"
#include "tests/end_to_end/zk4sim_session.h"
#include "workcell/station_names.h"

namespace {

/// A process that uses all the processor time that it gets.
class busy_process {
public:
    busy_process() : pid_(fork()) {
        if (pid_ == 0)
            for (volatile unsigned turns = 0;;) turns = turns + 1;
    }
    ~busy_process() {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    busy_process(const busy_process&) = delete;
    busy_process& operator=(const busy_process&) = delete;

private:
    pid_t pid_;
};

class scripted_station : public controlled_station {
public:
    scripted_station()
        : controlled_station({"--no-panel", "--paused", "--seed", "29"}), segment_(ident) {}

    /// Commands written "MT=1 BZ1=0".
    void set(const std::string& commands) {
        std::istringstream words(commands);
        for (std::string word; words >> word;) {
            const std::size_t equals = word.find('=');
            const int output = index_of(station_outputs, word.substr(0, equals));
            segment_->output_values[output] = std::stoi(word.substr(equals + 1));
        }
    }
    void step(const std::string& seconds) { EXPECT_EQ(ask("step " + seconds), "0\n"); }
    /// Sets commands, then steps until the sensor is 1.
    void set_until(const std::string& commands, const std::string& sensor) {
        set(commands);
        const int input = index_of(station_inputs, sensor);
        for (int i = 0; i < 1000; ++i) {
            step("0.05");
            if (io_value(*segment_, io_direction::input, input) == 1) return;
        }
        ADD_FAILURE() << sensor << " does not come";
    }

    void make_a_good_base();

private:
    attached_segment segment_;
};

void scripted_station::make_a_good_base() {
    // The bases gather, one steps over, and no second one.
    set("BZ1=1 BZ2=1 BZ3=1 MTA=1 MT=0");
    step("5");
    set("MT=1");
    step("1");
    set_until("MTA=0", "p1ok");
    set_until("DEPOSE=1", "colle");
    set("DEPOSE=0");
    set_until("BZ1=0", "p2ok");
    set_until("SORT=0 RENT=1", "pp");
    set_until("RENT=0 SORT=1", "ts");
    set_until("SORT=0 DESV=1", "vb");
    set_until("ASPI=1", "vide");
    set_until("DESV=0 MONV=1", "vh");
    set_until("MONV=0 RENT=1", "te");
    set_until("RENT=0 DESV=1", "vb");
    set("ASPI=0");
    step("0.2");
    set_until("DESV=0 MONV=1", "vh");
    set_until("MONV=0 BZ2=0", "p3ok");
    set_until("DESP=1", "timer10_term");
    set_until("DESP=0 MONP=1", "ph");
    set("MONP=0 BZ3=0");
    step("5");
}

/// What came of the script: the counts, the time, and every line about an incident.
std::string history() {
    scripted_station station;
    for (int i = 0; i < 5; ++i) {
        station.make_a_good_base();
        if (i % 2) continue;
        station.set("DEPOSE=1");  // No base is there.
        station.step("1.5");
        station.set("DEPOSE=0");
    }
    const std::string told = station.ask("status");
    EXPECT_EQ(station.end(), 0);
    return told + station.process->err();
}

TEST_F(Zk4sim, FiveGoodBasesByStepsAloneAreTheSameAHundredTimesAtAnyLoad) {
    const std::string first = history();
    ASSERT_NE(first.find("\nbonnes=5\nmauvaises=0\nincidents=3\n"), std::string::npos) << first;
    EXPECT_EQ(std::ranges::count(first, '\n'), 14 + 3 + 2) << first;
    for (int i = 1; i < 50; ++i) ASSERT_EQ(history(), first) << i;
    const busy_process one, other;
    for (int i = 50; i < 100; ++i) ASSERT_EQ(history(), first) << i;
}

}  // namespace
