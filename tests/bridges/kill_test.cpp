// kill -9 of the server, its guard, a client that commands, or the station, at any moment: the
// station comes to its safe state, the others tell, nothing hangs or is left behind.
#include <sys/prctl.h>
#include <sys/wait.h>

#include <cstdlib>
#include <iostream>
#include <random>

#include "tests/bridges/modbus_program.h"
#include "tests/support/runtime_folder.h"
#include "tests/support/station.h"

namespace {

enum class victim { server, guard, client, station };
constexpr const char* names[] = {"server", "guard", "client", "station"};

/// How many rounds a test makes: forty, or QUORIN_KILLS of the environment.
int kills() {
    const char* const wanted = std::getenv("QUORIN_KILLS");
    return wanted ? std::atoi(wanted) : 40;
}

/// A process that holds every coil at 1 through Modbus. It ends by itself when nobody answers.
class commanding_process {
public:
    explicit commanding_process(int port) : pid_(fork()) {
        if (pid_ != 0) return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (int i = 0; i < 1000; ++i) {
            const modbus_connection line(port);
            while (line.connected() && line.ask("0f 0000 000d 02 ff1f") == "0f 00 00 00 0d") {
                i = 1000;
                usleep(2000);
            }
            usleep(500);
        }
        _exit(0);
    }
    ~commanding_process() {
        if (pid_ > 0) kill(pid_, SIGKILL);
        ended();
    }
    commanding_process(const commanding_process&) = delete;
    commanding_process& operator=(const commanding_process&) = delete;

    pid_t id() const { return pid_; }
    bool ended() {
        if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) == pid_) pid_ = -1;
        return pid_ < 0;
    }

private:
    pid_t pid_;
};

class QuorinModbusKill : public testing::Test {
protected:
    ~QuorinModbusKill() override {
        for (int i = 0; i < 4; ++i) std::cout << names[i] << " " << killed_[i] << ", ";
        std::cout << "of " << rounds_ << ", " << commanded_ << " commanded; safe after "
                  << slowest_s_ << " s at most\n";
    }
    void sleep_at_random() {
        usleep(static_cast<useconds_t>(random_() % (random_() % 2 ? 30'000 : 250'000)));
    }
    /// Starts everything, kills one at some moment: of the start, or once it is commanded.
    void round(bool commanded);
    /// In how many rounds coils were 1 at that moment.
    int commanded() const { return commanded_; }

private:
    /// False where it is not there yet.
    bool kill_one(victim which, const station& running, const program& server,
                  const commanding_process& client) {
        const pid_t at[] = {server.id(), child_named(server.id(), "modbus-garde"), client.id(),
                            running.process->id()};
        const pid_t one = at[static_cast<int>(which)];
        if (one <= 0) return false;
        kill(one, SIGKILL);
        ++killed_[static_cast<int>(which)];
        return true;
    }
    static bool all_off(const attached_segment& segment) {
        for (int i = 0; i < segment->nb_outputs; ++i)
            if (segment->output_values[i] != 0) return false;
        return true;
    }
    void expect_safe(const attached_segment& segment) {
        const auto from = std::chrono::steady_clock::now();
        EXPECT_TRUE(wait_until([&] { return all_off(segment); }, seconds(10)));
        const seconds taken = std::chrono::steady_clock::now() - from;
        slowest_s_ = std::max(slowest_s_, taken.count());
    }
    void expect_others_to_tell(victim which, program& server, commanding_process& client);

    const runtime_folder folder_;
    leaves_nothing nothing_;
    std::mt19937 random_{std::random_device{}()};
    int killed_[4] = {}, rounds_ = 0, commanded_ = 0;
    double slowest_s_ = 0;
};

void QuorinModbusKill::expect_others_to_tell(victim which, program& server,
                                             commanding_process& client) {
    const std::optional<int> status = server.wait(seconds(20));
    ASSERT_TRUE(status) << server.err();
    if (which == victim::station) {
        EXPECT_TRUE(*status == 0 || *status == 1 || *status == 4) << *status;
        EXPECT_NE(server.err().find("session est terminée"), std::string::npos) << server.err();
    }
    if (which == victim::guard) {
        EXPECT_EQ(*status, 1);
        EXPECT_NE(server.err().find("garde a disparu\n"), std::string::npos) << server.err();
    }
    EXPECT_TRUE(wait_until([&] { return client.ended(); }, seconds(20)));
}

/// A server that lost nothing but a client ends when it is asked to; not before it has begun.
void expect_orderly_end(program& server) {
    EXPECT_TRUE(wait_until([&] { return !server.out().empty(); })) << server.err();
    server.signal(SIGTERM);
    EXPECT_EQ(server.wait(), 0) << server.err();
}

void QuorinModbusKill::round(bool commanded) {
    const auto which = static_cast<victim>(random_() % 4);
    SCOPED_TRACE(names[static_cast<int>(which)]);
    const int port = free_port();
    station running({"--no-panel", "--speed", "20"});
    const attached_segment segment(running.ident);
    ASSERT_TRUE(segment);
    program server(
        {built("quorin-modbus"), running.ident, "--control", "--port", std::to_string(port)});
    commanding_process client(port);
    if (commanded) wait_until([&] { return !all_off(segment); }, seconds(2));
    sleep_at_random();
    ++rounds_;
    commanded_ += !all_off(segment);
    const bool hit = kill_one(which, running, server, client);
    if (which == victim::client || !hit) {
        if (hit) expect_safe(segment);
        expect_orderly_end(server);
    } else {
        if (which != victim::station) expect_safe(segment);
        expect_others_to_tell(which, server, client);
    }
    expect_safe(segment);
    running.process->signal(SIGTERM);
    EXPECT_TRUE(running.process->wait());
}

TEST_F(QuorinModbusKill, ComesToTheSafeState) {
    for (int i = 0; i < kills() && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        round(i % 2 != 0);
        EXPECT_TRUE(wait_until([] { return leftovers::processes().empty(); }));
        EXPECT_TRUE(wait_until([] { return leftovers::segments().empty(); }));
    }
    EXPECT_GT(commanded(), kills() / 4);
}

}  // namespace
