#include "bench/measure.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <map>

namespace dossierkit::bench {
namespace {

// Prints as usual, and keeps the counters for the check.
class KeepingReporter : public benchmark::ConsoleReporter {
 public:
  KeepingReporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      for (const auto& [name, counter] : run.counters)
        counters_[run.run_name.function_name + "/" + run.run_name.args][name] = counter.value;
    }
    ConsoleReporter::ReportRuns(runs);
  }

  const double* Find(const std::string& benchmark, const std::string& counter) const {
    for (const auto& [name, counters] : counters_) {
      if (name != benchmark && name != benchmark + "/") continue;
      const auto found = counters.find(counter);
      if (found != counters.end()) return &found->second;
    }
    return nullptr;
  }

 private:
  std::map<std::string, std::map<std::string, double>> counters_;
};

bool Holds(const KeepingReporter& reporter, const Limit& limit) {
  const double* measured = reporter.Find(limit.benchmark, limit.counter);
  const bool holds = measured && *measured <= limit.most;
  std::cout << (holds ? "ok    " : "FAILED") << " " << limit.benchmark << " " << limit.counter << ": ";
  if (measured) {
    std::cout << *measured;
  } else {
    std::cout << "not measured";
  }
  std::cout << " (at most " << limit.most << ")\n";
  return holds;
}

}  // namespace

double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Samples::Quantile(double share) const {
  auto sorted = values_;
  if (sorted.empty()) return 0;
  std::sort(sorted.begin(), sorted.end());
  const auto at = static_cast<std::size_t>(share * static_cast<double>(sorted.size()));
  return sorted[std::min(at, sorted.size() - 1)];
}

void Measure(benchmark::State& state, Samples& samples, const std::function<void()>& work) {
  const double milliseconds = Milliseconds(work);
  samples.Add(milliseconds);
  state.SetIterationTime(milliseconds / 1000);
}

int RunBenchmarks(int argc, char** argv, const std::vector<Limit>& limits) {
  bool check = false;
  std::vector<char*> arguments;
  for (int i = 0; i < argc; ++i) {
    if (std::strcmp(argv[i], "--check") == 0) {
      check = true;
    } else {
      arguments.push_back(argv[i]);
    }
  }
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  KeepingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  if (!check) return 0;
  bool all = true;
  for (const Limit& limit : limits) all = Holds(reporter, limit) && all;
  return all ? 0 : 1;
}

double PeakResidentMebibytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

}  // namespace dossierkit::bench
