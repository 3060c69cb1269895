// The system alone, with views without a screen.
#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>

#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "bench/paste_bench.h"
#include "codes/lookup_code.h"
#include "platform/environment/failure.h"
#include "platform/jet/statement.h"
#include "tests/platform/jet/strict_renderer.h"
#include "tests/support/paths.h"

namespace dossierkit::bench {
namespace {

constexpr int kChanges = 200;
constexpr int kTurns = 4;

// Adds the times of that many changes of set, each set in its turn, after every set was shown once.
void ChangeSets(Samples& samples, const std::string& database, int changes) {
  BenchVisit visit(database);
  visit.Open([&] {
    std::size_t next = 0;
    const auto change = [&] { visit.GoTo(AllSets()[next++ % AllSets().size()]); };
    for (std::size_t i = 0; i < AllSets().size(); ++i) change();
    for (int i = 0; i < changes; ++i) samples.Add(Milliseconds(change));
  });
}

void ChangeOfSet(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  Samples samples;
  for (auto _ : state) {
    ChangeSets(samples, copy.Path(), kChanges);
    state.SetIterationTime(samples.Median() / 1000);
  }
  state.counters["median_ms"] = samples.Median();
}
BENCHMARK(ChangeOfSet)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

// 100,000 persons, 1,000,000 rows in A02; `times` is the time in those of the sample database. The two
// take turns, so that nothing else on the machine slows down one of them alone.
void ChangeOfSetLarge(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  const std::string large = GeneratedDatabase(100'000, 10);
  Samples warm;
  Samples sample;
  Samples samples;
  ChangeSets(warm, large, kChanges);
  for (auto _ : state) {
    for (int turn = 0; turn < kTurns; ++turn) {
      ChangeSets(sample, copy.Path(), kChanges / kTurns);
      ChangeSets(samples, large, kChanges / kTurns);
    }
    state.SetIterationTime(samples.Median() / 1000);
  }
  state.counters["median_ms"] = samples.Median();
  state.counters["times"] = samples.Median() / sample.Median();
}
BENCHMARK(ChangeOfSetLarge)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

// The toolbar's Save on an edited record of a person who has five, with the reload and the next new
// record, on the disk.
void SaveOfFive(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  Samples samples;
  BenchVisit visit(copy.Path());
  visit.Open([&] {
    visit.GoTo("A03");
    for (auto _ : state) {
      visit.user.ClickRow(1);
      visit.user.Click("A03_A0302_v");
      visit.user.Type("x");
      Measure(state, samples, [&] { visit.user.ClickToolbar("Save"); });
      visit.user.ClickRow(1);
      visit.user.Click("A03_A0302_v");
      visit.user.Press(toolkit::kKeyEnd);
      visit.user.Press(toolkit::kKeyBack);
      visit.user.ClickToolbar("Save");
    }
  });
  state.counters["median_ms"] = samples.Median();
}
BENCHMARK(SaveOfFive)->UseManualTime()->Iterations(50)->Unit(benchmark::kMillisecond);

// Delete with its walk over all rows of the table. Beyond 32,767 rows the reload fails with 溢出, as
// required.
void DeleteWalk(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  const Copy copy(GeneratedDatabase(rows / 10, 10));
  Samples samples;
  BenchVisit visit(copy.Path());
  try {
    visit.Open([&] {
      visit.GoTo("A02");
      visit.script.WillAnswer(toolkit::kAnswerYes);
      for (auto _ : state) Measure(state, samples, [&] { visit.user.ClickToolbar("Delete"); });
    });
  } catch (const environment::Failure& failure) {
    if (failure.number() != environment::kOverflow) throw;
  }
  state.counters["seconds"] = samples.Median() / 1000;
  state.counters["us_per_row"] = samples.Median() * 1000 / rows;
  state.counters["peak_MiB"] = PeakResidentMebibytes();
}
BENCHMARK(DeleteWalk)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

// A shorthand that the exact query does not find and the like query finds once.
void Lookup(benchmark::State& state, const std::string& database, const std::string& table,
            const std::string& text) {
  Samples samples;
  BenchVisit visit(database);
  visit.Open([&] {
    cFieldItem item;
    item.CodeTable = table;
    for (auto _ : state) {
      Measure(state, samples, [&] {
        if (LookupCode(item, text).empty()) throw std::logic_error(text + " was not found");
      });
    }
  });
  state.counters["median_ms"] = samples.Median();
}

void LookupInThreeThousand(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  Lookup(state, copy.Path(), "GB2260", "呼和浩特");
}
BENCHMARK(LookupInThreeThousand)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

void LookupInAHundredThousand(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  AddCodeTable(copy.Path(), 100'000);
  Lookup(state, copy.Path(), "BIG", "第98765号");
}
BENCHMARK(LookupInAHundredThousand)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

// A condition of that many parts, a value of that many iif or a select below that many others.
std::string LongStatement(int shape, int length) {
  std::string text = shape == 1 ? "A0299" : "A0202='x'";
  for (int i = 0; i < length; ++i) {
    if (shape == 0) text += " or (t.A0203 in ('a','b') and iif(A0206,'1','0')='1' and A0204 like '[a]%')";
    if (shape == 1) text.insert(0, "iif(A0206,").append(",1)");
    if (shape == 2) text.insert(0, "A00 in (select A00 from A02 where ").append(")");
  }
  return shape == 1 ? "select " + text + " from A02" : "select A00 from A02 t where " + text;
}

// The translation of a statement twice as long, in times of the short one's, for an engine that has ways of
// its own throughout. The two take turns and the fastest of each counts, whatever else the machine does.
void TwiceTheStatement(benchmark::State& state) {
  const jet::TableColumns columns{{"A00", ado::ColumnKind::kText, false},
                                  {"A0202", ado::ColumnKind::kText, false},
                                  {"A0203", ado::ColumnKind::kText, false},
                                  {"A0206", ado::ColumnKind::kBoolean, false}};
  const jet::ColumnLookup lookup = [&](std::string_view) { return &columns; };
  const int shape = static_cast<int>(state.range(0));
  const std::string statements[] = {LongStatement(shape, 2000), LongStatement(shape, 4000)};
  double fastest[] = {std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
  for (auto _ : state) {
    for (std::size_t i = 0; i < 2; ++i) {
      const double milliseconds =
          Milliseconds([&] { jet::Translate(statements[i], lookup, jet::kStrictRenderer); });
      fastest[i] = std::min(fastest[i], milliseconds);
    }
    state.SetIterationTime(fastest[1] / 1000);
  }
  state.counters["times"] = fastest[1] / fastest[0];
}
BENCHMARK(TwiceTheStatement)
    ->DenseRange(0, 2)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  dossierkit::bench::RegisterPastes([] {});
  return dossierkit::bench::RunBenchmarks(
      argc, argv,
      dossierkit::bench::WithPasteLimits({{"ChangeOfSet", "median_ms", 3},
                                          {"ChangeOfSetLarge", "times", 1.5},
                                          {"SaveOfFive", "median_ms", 20},
                                          {"TwiceTheStatement/0", "times", 2.6},
                                          {"TwiceTheStatement/1", "times", 2.6},
                                          {"TwiceTheStatement/2", "times", 2.6},
                                          {"LookupInThreeThousand", "median_ms", 3},
                                          {"LookupInAHundredThousand", "median_ms", 60},
                                          {"DeleteWalk/1000000", "seconds", 15},
                                          {"DeleteWalk/1000000", "peak_MiB", 400}}));
}
