// The check of a host's database: how its time grows with the persons.
#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "host/check/check.h"

namespace dossierkit::bench {
namespace {

constexpr int kTurns = 5;

double CheckOf(const std::string& database) {
  sqlite::SqliteConnection connection(database);
  return Milliseconds([&] { check::CheckDatabase(connection); });
}

// 20,000 persons with 200,000 rows in A02; `times` is the time in those of half as many. The two take turns,
// so that nothing else on the machine slows down one of them alone.
void TwiceThePersons(benchmark::State& state) {
  const std::string one = GeneratedDatabase(10'000, 10);
  const std::string two = GeneratedDatabase(20'000, 10);
  CheckOf(one);
  CheckOf(two);
  Samples times;
  Samples samples;
  for (auto _ : state) {
    for (int turn = 0; turn < kTurns; ++turn) {
      const double half = CheckOf(one);
      const double whole = CheckOf(two);
      samples.Add(whole);
      times.Add(whole / half);
    }
    state.SetIterationTime(samples.Median() / 1000);
  }
  state.counters["median_ms"] = samples.Median();
  state.counters["times"] = times.Median();
}
BENCHMARK(TwiceThePersons)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

// 100,000 persons, 1,000,000 rows in A02.
void LargeDatabase(benchmark::State& state) {
  const std::string large = GeneratedDatabase(100'000, 10);
  Samples samples;
  for (auto _ : state) {
    const double milliseconds = CheckOf(large);
    samples.Add(milliseconds);
    state.SetIterationTime(milliseconds / 1000);
  }
  state.counters["seconds"] = samples.Median() / 1000;
  state.counters["peak_MiB"] = PeakResidentMebibytes();
}
BENCHMARK(LargeDatabase)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  return dossierkit::bench::RunBenchmarks(argc, argv,
                                          {{"TwiceThePersons", "times", 2.5},
                                           {"LargeDatabase", "seconds", 10},
                                           {"LargeDatabase", "peak_MiB", 400}});
}
