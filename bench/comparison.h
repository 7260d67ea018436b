// Several ways of doing the same thing, timed in one run and shown as ratios.
#pragma once
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// One way of doing a task; `task` and `name` together are the benchmark's name.
struct added_way {
    std::string task, name;
    std::string benchmark() const { return task + "/" + name; }
};

/// In the order in which they were added.
inline std::vector<added_way> added_ways;

/// Adds one way of doing `task`: `work` is called over and over, and
/// its result counts as used. The first way of a task is the one that
/// the others are compared with; they follow it. Names hold no "/".
///
///     add_way("int from text", "Stoi", [] { return Stoi("12"); });
///     add_way("int from text", "std::stol", [] { return std::stol("12"); });
template <class Work>
void add_way(const std::string& task, const std::string& name, Work work) {
    added_ways.push_back({task, name});
    const auto run = [work](benchmark::State& state) {
        for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(work());
    };
    benchmark::RegisterBenchmark(added_ways.back().benchmark().c_str(), run);
}

/// Prints the usual lines, then a table: each other way's time in units of the first way's.
class ratio_reporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration || run.aggregate_name == "median")
                time_ns_[run.run_name.function_name] = run.GetAdjustedRealTime();
    }

    void Finalize() override {
        std::printf(
            "\n| Task | Ours (ns) | Other way | Its time, ours being 1 |\n|---|---|---|---|\n");
        const added_way* ours = nullptr;
        for (const added_way& way : added_ways) {
            if (!ours || ours->task != way.task)
                ours = &way;
            else if (time_ns_.contains(ours->benchmark()) && time_ns_.contains(way.benchmark()))
                print_row(*ours, way);
        }
    }

private:
    void print_row(const added_way& ours, const added_way& other) {
        const double ours_ns = time_ns_[ours.benchmark()], other_ns = time_ns_[other.benchmark()];
        std::printf("| %s: `%s` | %.0f | `%s` | %.2f |\n", ours.task.c_str(), ours.name.c_str(),
                    ours_ns, other.name.c_str(), other_ns / ours_ns);
    }

    std::map<std::string, double> time_ns_;  // by the benchmark's name
};

/// Runs what was added, as the command line says; returns the program's status.
inline int run_comparisons(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    ratio_reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
