// Several ways of doing the same thing, timed in one run and shown as ratios.
#pragma once
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

/// Adds one way of doing `task`: `work` is called over and over, and its result counts as used. The
/// first way of a task is the one that the others are compared with. Names hold no "/".
///
///     add_way("int from text", "Stoi", [] { return Stoi("12"); });
///     add_way("int from text", "std::stol", [] { return std::stol("12"); });
template <class Work>
void add_way(const std::string& task, const std::string& name, Work work) {
    benchmark::RegisterBenchmark((task + "/" + name).c_str(), [work](benchmark::State& state) {
        for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(work());
    });
}

/// Prints the usual lines, then a table: each other way's time in units of the first way's.
class ratio_reporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration || run.aggregate_name == "median") keep(run);
    }

    void Finalize() override {
        std::printf(
            "\n| Task | Ours (ns) | Other way | Its time, ours being 1 |\n|---|---|---|---|\n");
        for (const auto& [task, ways] : tasks_)
            for (std::size_t other = 1; other < ways.size(); ++other)
                std::printf("| %s: `%s` | %.0f | `%s` | %.2f |\n", task.c_str(),
                            ways[0].first.c_str(), ways[0].second, ways[other].first.c_str(),
                            ways[other].second / ways[0].second);
    }

private:
    using way = std::pair<std::string, double>;  // name, nanoseconds

    void keep(const Run& run) {
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.find('/');
        const std::string task = name.substr(0, slash);
        if (tasks_.empty() || tasks_.back().first != task) tasks_.push_back({task, {}});
        tasks_.back().second.emplace_back(name.substr(slash + 1), run.GetAdjustedRealTime());
    }

    std::vector<std::pair<std::string, std::vector<way>>> tasks_;
};

/// Runs what was added, as the command line says; returns the program's status.
inline int run_comparisons(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    ratio_reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
