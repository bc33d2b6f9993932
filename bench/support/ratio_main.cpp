// Runs the benchmarks of a program and prints, for each case and peer, the ratio of the peer's time
// to the library's in this run.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "bench/support/system.h"

namespace {

struct Case {
    std::string name;
    std::vector<std::pair<std::string, double>> times;  // name, and minimum nanoseconds per
                                                        // iteration
};

class RatioReporter : public benchmark::ConsoleReporter {
  public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                Note(run.run_name.function_name, TimeOf(run));
    }

    void Finalize() override {
        std::printf("\n%-44s %12s   %s\n", "case", "genutil ns", "times as fast as");
        for (const Case& row : m_cases) PrintCase(row);
    }

  private:
    void Note(const std::string& full, double time) {
        const std::size_t slash = full.rfind('/');
        if (slash == std::string::npos) return;
        const std::string name = full.substr(0, slash), who = full.substr(slash + 1);
        auto [at, isNew] = m_index.try_emplace(name, m_cases.size());
        if (isNew) m_cases.push_back({name, {}});
        auto& times = m_cases[at->second].times;
        for (auto& entry : times)
            if (entry.first == who) {
                if (time < entry.second) entry.second = time;
                return;
            }
        times.emplace_back(who, time);
    }

    static void PrintCase(const Case& row) {
        double own = 0;
        for (const auto& [who, time] : row.times)
            if (who == "genutil") own = time;
        if (own == 0) return;
        std::printf("%-44s %12.0f  ", row.name.c_str(), own);
        for (const auto& [who, time] : row.times)
            if (who != "genutil") std::printf(" %s %.2f", who.c_str(), time / own);
        std::printf("\n");
    }

    std::vector<Case> m_cases;
    std::map<std::string, std::size_t> m_index;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
