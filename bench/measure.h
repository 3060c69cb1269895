// What the benchmark programs share: samples, limits, and a main function that knows --check.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace dossierkit::bench {

// Milliseconds of one call.
double Milliseconds(const std::function<void()>& work);

class Samples {
 public:
  void Add(double value) { values_.push_back(value); }
  double Median() const { return Quantile(0.5); }
  // The value that so many of them, 0 to 1, do not reach.
  double Quantile(double share) const;

 private:
  std::vector<double> values_;
};

// Measures one iteration of `state` and adds it to the samples.
void Measure(benchmark::State& state, Samples& samples, const std::function<void()>& work);

// The most that a counter of a benchmark may be; --check fails beyond it.
struct Limit {
  std::string benchmark;  // as Google Benchmark names it, without its suffixes
  std::string counter;
  double most;
};

// Runs the benchmarks. With --check, prints each limit and gives 1 where one is exceeded or was not
// measured.
int RunBenchmarks(int argc, char** argv, const std::vector<Limit>& limits);

// The greatest resident size of this process so far, in MiB.
double PeakResidentMebibytes();

}  // namespace dossierkit::bench
