// Runs the benchmarks of a program and ends with the ratios. A benchmark is named WHAT/WHO; the
// library's own is WHAT/tarvo, every other of the same WHAT is a peer. Repetitions are taken in
// random order, so that a machine whose speed drifts is unfair to nobody, and their medians count.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

using Measured = std::map<std::string, std::map<std::string, std::vector<double>>>;

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

class RatioReporter : public benchmark::ConsoleReporter {
  public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            const std::string& name = run.run_name.function_name;
            const std::size_t slash = name.rfind('/');
            if (run.run_type != Run::RT_Iteration || slash == std::string::npos)
                continue;
            const std::string what = name.substr(0, slash);
            const std::string who = name.substr(slash + 1);
            time_[what][who].push_back(run.GetAdjustedRealTime());
            for (const auto& [counter, value] : run.counters)
                if (counter.find("bytes") != std::string::npos &&
                    (value.flags & benchmark::Counter::kIsRate) == 0)
                    time_[what + ", " + counter][who].push_back(value.value);
        }
    }

    void Finalize() override {
        std::cout
            << "\nMedians of the library to those of its peers (below 1 the library is ahead):\n";
        for (const auto& [what, byWho] : time_) {
            const auto own = byWho.find("tarvo");
            for (const auto& [who, values] : byWho)
                if (own != byWho.end() && who != "tarvo")
                    std::printf("  %-44s %8.2f of %s\n", what.c_str(),
                                median(own->second) / median(values), who.c_str());
        }
    }

  private:
    Measured time_;
};

} // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=7";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, {repetitions, interleaving});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
