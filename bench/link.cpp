// The link's calls on the panel's own names, beside plain memory work of the same size.
#include <benchmark/benchmark.h>
#include <sys/shm.h>

#include <cstring>
#include <iostream>
#include <list>
#include <map>
#include <string>

#include "ioshare/io_client.h"
#include "ioshare/io_server.h"
#include "workcell/station_names.h"

namespace {

/// Both halves in one process, on a segment that goes with it.
struct link_pair {
    IOsharemem_server server{{station_inputs.begin(), station_inputs.end()},
                             {station_outputs.begin(), station_outputs.end()}};
    IOsharemem_client client{(shmctl(server.ident, IPC_RMID, nullptr), server.ident)};
};

link_pair& the_link() {
    static link_pair pair;
    return pair;
}

/// The look-ups that a dictionary of the same names would take.
std::map<std::string, int> dictionary(const std::vector<std::string>& names) {
    std::map<std::string, int> all;
    for (const std::string& name : names) all[name] = 0;
    return all;
}

// The panel shows all inputs but the last one, the press's timer.
const std::vector<std::string> input_names(station_inputs.begin(),
                                           station_inputs.begin() +
                                               place_of(station_input::timer10_term));
const std::vector<std::string> output_names(station_outputs.begin(), station_outputs.end());

void receive_with_a_publication(benchmark::State& state) {
    link_pair& link = the_link();
    for (auto _ : state) {
        link.server.inputs_go();
        benchmark::DoNotOptimize(link.client.receive());
    }
}
BENCHMARK(receive_with_a_publication);

void copy_of_23_values(benchmark::State& state) {
    constexpr int values = place_of(station_input::count);
    std::int32_t from[values] = {}, to[values];
    for (auto _ : state) {
        benchmark::DoNotOptimize(from);
        std::memcpy(to, from, sizeof to);
        benchmark::DoNotOptimize(to);
    }
}
BENCHMARK(copy_of_23_values);

void input_is_set_over_22_names(benchmark::State& state) {
    link_pair& link = the_link();
    for (auto _ : state) {
        for (const std::string& name : input_names)
            benchmark::DoNotOptimize(link.client.input_is_set(name));
    }
}
BENCHMARK(input_is_set_over_22_names);

void dictionary_look_up_of_22_names(benchmark::State& state) {
    const std::map<std::string, int> values = dictionary(input_names);
    for (auto _ : state) {
        for (const std::string& name : input_names)
            benchmark::DoNotOptimize(values.find(name)->second);
    }
}
BENCHMARK(dictionary_look_up_of_22_names);

void setreset_output_over_13_names(benchmark::State& state) {
    link_pair& link = the_link();
    for (auto _ : state) {
        for (const std::string& name : output_names) link.client.setreset_output(name, 1);
    }
}
BENCHMARK(setreset_output_over_13_names);

void dictionary_store_of_13_names(benchmark::State& state) {
    std::map<std::string, int> values = dictionary(output_names);
    for (auto _ : state) {
        for (const std::string& name : output_names)
            benchmark::DoNotOptimize(values.find(name)->second = 1);
    }
}
BENCHMARK(dictionary_store_of_13_names);

}  // namespace

BENCHMARK_MAIN();
