// The whole program, from its start to the first painted page, on an X display; and its memory then.
#include <QGuiApplication>
#include <algorithm>

#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "bench/program_start.h"
#include "tests/support/paths.h"

namespace dossierkit::bench {
namespace {

Start StartDossier(const std::string& database) {
  return StartProgram({tests::DossierProgram(), "--database", database, "--person", kPerson});
}

void ProgramStart(benchmark::State& state, const std::string& database) {
  Samples samples;
  StartDossier(database);
  double mebibytes = 0;
  for (auto _ : state) {
    const Start start = StartDossier(database);
    samples.Add(start.milliseconds);
    state.SetIterationTime(start.milliseconds / 1000);
    mebibytes = std::max(mebibytes, start.mebibytes);
  }
  state.counters["median_ms"] = samples.Median();
  state.counters["resident_MiB"] = mebibytes;
}

void StartOnSample(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  ProgramStart(state, copy.Path());
}
BENCHMARK(StartOnSample)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

void StartOnLarge(benchmark::State& state) { ProgramStart(state, GeneratedDatabase(100'000, 10)); }
BENCHMARK(StartOnLarge)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  int count = 1;
  const QGuiApplication application(count, argv);
  return dossierkit::bench::RunBenchmarks(argc, argv,
                                          {{"StartOnSample", "median_ms", 110},
                                           {"StartOnSample", "resident_MiB", 80},
                                           {"StartOnLarge", "median_ms", 110},
                                           {"StartOnLarge", "resident_MiB", 80}});
}
