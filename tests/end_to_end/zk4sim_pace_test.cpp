// zk4sim in time: alone on the machine, since time is what it is about.
#include <signal.h>

#include <chrono>
#include <list>
#include <thread>

#include "tests/end_to_end/zk4sim_session.h"
#include "tests/support/elapsed.h"

namespace {

double now_s() { return seconds(std::chrono::steady_clock::now().time_since_epoch()).count(); }

TEST_F(Zk4sim, KeepsRealTimeAtTheSpeedAskedFor) {
    const struct {
        const char *speed, *duration;
        double real_s;
    } rows[] = {{"1", "0.5", 0.5}, {"0.1", "0.05", 0.5}, {"10", "5", 0.5}, {"100", "50", 0.5}};
    for (const auto& [speed, duration, real_s] : rows) {
        const double start_s = now_s();
        const given_clock clock;
        EXPECT_EQ(run_zk4sim({"--no-panel", "--speed", speed, "--duration", duration}).status, 0);
        EXPECT_GE(now_s() - start_s, real_s - 0.02) << speed;
        EXPECT_LT(clock.now_s(), real_s + 1.0) << speed;
    }
}

/// How far simulated time is behind real time, looked at again and again. What the machine kept
/// since the last look is no lateness of the station's.
class lateness {
public:
    explicit lateness(const controlled_station& station) : station_(station) { look(); }
    void look() {
        const double asked_s = now_s(), kept_s = asked_s - begun_s_ - clock_.now_s();
        const double late_s = asked_s - station_.simulated_s();
        least_s_ = std::min(least_s_, late_s);
        most_s_ = std::max(most_s_, late_s - (kept_s - kept_before_s_));
        kept_before_s_ = kept_s;
    }
    double change_s() const { return most_s_ - least_s_; }

private:
    const controlled_station& station_;
    const double begun_s_ = now_s();
    const given_clock clock_;
    double kept_before_s_ = 0, least_s_ = 1e9, most_s_ = -1e9;
};

TEST_F(Zk4sim, ItsStepsAreNotLateForTenThousandMalformedRequestsAndAHundredStalledClients) {
    controlled_station running({"--no-panel"});
    std::list<control_client> stalled;
    lateness late(running);
    const double start_s = now_s();
    for (int i = 0; i < 10'000; ++i) {
        if (i % 100 == 0) {
            late.look();
            stalled.clear();
            for (int k = 0; k < 100; ++k)
                stalled.emplace_back(running.socket()).send_bytes(k % 2 ? "statu" : "");
        }
        const control_client wrong(running.socket());
        ASSERT_TRUE(wrong.connected());
        wrong.send_bytes(i % 3 ? "no such request\n" : std::string(5000, 'x'));
        if (i % 7 == 0) continue;  // It does not wait for its answer.
        ASSERT_TRUE(wrong.answer().value_or("").starts_with("2\n")) << i;
    }
    late.look();
    EXPECT_LT(late.change_s(), 0.2) << "in " << now_s() - start_s << " s";
    EXPECT_EQ(running.end(), 0);
}

TEST_F(Zk4sim, WhoeverIsLeftKnowsWithinASecondThatAProcessWasKilled) {
    enum class victim { station, supervisor, command };
    for (const victim each : {victim::station, victim::supervisor, victim::command}) {
        station running({"--exec", "exec sleep 1000"});
        const attached_segment segment(running.ident);
        const pid_t station = running.process->id();
        const auto child = [&](const char* name) {
            pid_t found = 0;
            wait_until([&] { return (found = child_named(station, name)) != 0; });
            return found;
        };
        const pid_t supervisor = child("zk4sim-garde"), command = child("sleep");
        kill(each == victim::station      ? station
             : each == victim::supervisor ? supervisor
                                          : command,
             SIGKILL);
        EXPECT_TRUE(wait_until([&] { return segment.session_over(); }, seconds(1)))
            << static_cast<int>(each);
        kill(command, SIGKILL);
        running.process->wait();
    }
}

TEST_F(Zk4sim, ALockWhoseHolderDiedHoldsTheStationUpForASecondAtMost) {
    station running({"--no-panel", "--speed", "20"});
    run_in_child([&running] {
        const attached_segment held(running.ident);
        while (sem_trywait(&held->lock) != 0) usleep(100);
        kill(getpid(), SIGKILL);
    });
    EXPECT_EQ(running.io({"set", "BZ1=1"}).status, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    EXPECT_EQ(running.io({"wait", "b1s=1", "--timeout", "2"}).status, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    int count = -1;
    sem_getvalue(&attached_segment(running.ident)->lock, &count);
    EXPECT_EQ(count, 1) << "posted once, not twice";
}

}  // namespace
