// What the Modbus server costs: a read of 22 inputs with a write of 13 coils beside the same on the
// link itself, the processor's time at a hundred requests a second, and memory.
#include <cstdio>
#include <thread>

#include "bench/whole_program.h"
#include "ioshare/io_client.h"
#include "tests/bridges/modbus_program.h"

namespace {

using steady = std::chrono::steady_clock;

constexpr int inputs = 22, outputs = 13, rounds = 20'000;

std::list<std::string> names(const std::string& begin, int count) {
    std::list<std::string> all;
    for (int i = 0; i < count; ++i) all.push_back(begin + std::to_string(i));
    return all;
}

struct times {
    double median_us, late_us;
};

/// Times `exchange` again and again; `before` each is not timed.
template <class Before, class Exchange>
times timed(Before before, Exchange exchange) {
    std::vector<double> all_us;
    for (int i = 0; i < rounds; ++i) {
        before();
        const auto start = steady::now();
        exchange(i % 2);
        all_us.push_back(seconds_since(start) * 1e6);
    }
    std::ranges::sort(all_us);
    return {all_us[all_us.size() / 2], all_us[all_us.size() * 99 / 100]};
}

times on_the_link(test_server& server, IOsharemem_client& client) {
    const std::list<std::string> read = names("e", inputs), written = names("S", outputs);
    int seen = 0;
    const times taken = timed([&] { server->inputs_go(); },
                              [&](int value) {
                                  client.receive();
                                  for (const auto& each : read) seen += client.input_is_set(each);
                                  for (const auto& each : written)
                                      client.setreset_output(each, value);
                              });
    if (seen != 0) std::printf("inputs were set\n");
    return taken;
}

bool exchange(const modbus_connection& client, int value) {
    return client.ask("02 0000 0016") == "02 03 00 00 00" &&
           client.ask(value ? "0f 0000 000d 02 ff1f" : "0f 0000 000d 02 0000") == "0f 00 00 00 0d";
}

times through_modbus(test_server& server, const modbus_connection& client) {
    int wrong = 0;
    const times taken =
        timed([&] { server->inputs_go(); }, [&](int value) { wrong += !exchange(client, value); });
    if (wrong != 0) std::printf("%d exchanges went wrong\n", wrong);
    return taken;
}

void measure_load(const modbus_bridge& bridge, const modbus_connection& client) {
    constexpr int watched_s = 20, pairs_a_second = 50;
    const double idle_from = processor_seconds(bridge.process->id());
    for (int i = 0; i < watched_s; ++i) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        exchange(client, 0);
    }
    const double busy_from = processor_seconds(bridge.process->id());
    auto next = steady::now();
    for (int i = 0; i < watched_s * pairs_a_second; ++i) {
        exchange(client, i % 2);
        next += std::chrono::microseconds(1'000'000 / pairs_a_second);
        std::this_thread::sleep_until(next);
    }
    const double busy_s = processor_seconds(bridge.process->id()) - busy_from;
    std::printf("processor: at rest %.2f %%, at 100 requests a second %.2f %% of a core\n",
                100 * (busy_from - idle_from) / watched_s, 100 * busy_s / watched_s);
    const pid_t guard = child_named(bridge.process->id(), "modbus-garde");
    std::printf("resident: server %ld KiB, guard %ld KiB\n", resident_kib(bridge.process->id()),
                resident_kib(guard));
}

}  // namespace

int main() {
    test_server server(names("e", inputs), names("S", outputs));
    const std::string ident = std::to_string(server->memory_ident());
    const modbus_bridge bridge(ident, {"--control"});
    const modbus_connection line(bridge.port);
    IOsharemem_client client(server->memory_ident());
    const times direct = on_the_link(server, client);
    const times modbus = through_modbus(server, line);
    std::printf("link: median %.1f us, 99 %% within %.1f us\n", direct.median_us, direct.late_us);
    std::printf("Modbus: median %.1f us, 99 %% within %.1f us\n", modbus.median_us, modbus.late_us);
    std::printf("ratio of the medians: %.1f\n", modbus.median_us / direct.median_us);
    measure_load(bridge, line);
    return 0;
}
