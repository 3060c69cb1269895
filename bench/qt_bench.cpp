// The window in Qt, offscreen, until it is painted.
#include <QApplication>
#include <QWidget>

#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "bench/paste_bench.h"
#include "codes/fm_grp_cod.h"
#include "tests/support/paths.h"

namespace dossierkit::bench {
namespace {

// Everything that was asked to be painted is painted when this returns.
void Paint() { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

void ChangeOfSetPainted(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  Samples samples;
  BenchVisit visit(copy.Path());
  visit.Open([&] {
    std::size_t next = 0;
    const auto change = [&] {
      visit.GoTo(AllSets()[next++ % AllSets().size()]);
      Paint();
    };
    for (std::size_t i = 0; i < AllSets().size(); ++i) change();
    for (auto _ : state) Measure(state, samples, change);
  });
  state.counters["median_ms"] = samples.Median();
}
BENCHMARK(ChangeOfSetPainted)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

void ShowToFirstPage(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  Samples samples;
  BenchVisit visit(copy.Path());
  visit.Open([] { Paint(); });  // fonts and icons
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    double milliseconds = 0;
    visit.Open([&] {
      Paint();
      milliseconds =
          std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    });
    samples.Add(milliseconds);
    state.SetIterationTime(milliseconds / 1000);
  }
  state.counters["median_ms"] = samples.Median();
}
BENCHMARK(ShowToFirstPage)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

void MoveInList(benchmark::State& state, const std::string& database, const std::string& set) {
  Samples moves;
  double shown = 0;
  BenchVisit visit(database);
  visit.Open([&] {
    Paint();
    shown = Milliseconds([&] {
      visit.GoTo(set);
      Paint();
    });
    bool forward = true;
    for (auto _ : state) {
      Measure(state, moves, [&] {
        visit.user.Press(forward ? 190 : 188, toolkit::kCtrl);
        Paint();
      });
      forward = !forward;
    }
  });
  state.counters["shown_ms"] = shown;
  state.counters["median_ms"] = moves.Median();
}

void MoveToTheNextRecord(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  MoveInList(state, copy.Path(), "A03");
}
BENCHMARK(MoveToTheNextRecord)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

void ListOfTenThousand(benchmark::State& state) { MoveInList(state, GeneratedDatabase(1, 10'000), "A02"); }
BENCHMARK(ListOfTenThousand)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

// The picker on a table of that many codes, from the call to its painted tree; `growth` is the time in
// those of a tenth of the codes.
void PickerShown(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  AddCodeTable(copy.Path(), static_cast<int>(state.range(0)));
  Samples samples;
  BenchVisit visit(copy.Path());
  visit.Open([&] {
    fmGrpCod& picker = CodePicker();
    picker.DmGrp = "BIG";
    for (auto _ : state) {
      const auto start = std::chrono::steady_clock::now();
      visit.script.WillRun([&](toolkit::Form&) {
        Paint();
        const double milliseconds =
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        samples.Add(milliseconds);
        state.SetIterationTime(milliseconds / 1000);
      });
      picker.ShowModal();
    }
  });
  const double median = samples.Median();
  static double of_former_size = 0;
  state.counters["median_ms"] = median;
  if (of_former_size > 0) state.counters["growth"] = median / of_former_size;
  of_former_size = median;
}
BENCHMARK(PickerShown)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

// The search in the picker, with 50,000 hits, until its list is painted.
void PickerSearch(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  AddCodeTable(copy.Path(), 100'000);
  Samples samples;
  BenchVisit visit(copy.Path());
  visit.Open([&] {
    fmGrpCod& picker = CodePicker();
    picker.DmGrp = "BIG";
    visit.script.WillRun([&](toolkit::Form&) {
      visit.user.SelectTab("Tab1", 1);
      visit.user.Click("txtDm");
      visit.user.Type("甲");
      for (auto _ : state) {
        visit.user.Click("txtDm");
        Paint();
        Measure(state, samples, [&] {
          visit.user.Press(toolkit::kKeyReturn);
          Paint();
        });
      }
    });
    picker.ShowModal();
  });
  state.counters["median_ms"] = samples.Median();
}
BENCHMARK(PickerSearch)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  dossierkit::bench::RegisterPastes(dossierkit::bench::Paint);
  return dossierkit::bench::RunBenchmarks(
      argc, argv,
      dossierkit::bench::WithPasteLimits({{"ChangeOfSetPainted", "median_ms", 30},
                                          {"ShowToFirstPage", "median_ms", 60},
                                          {"MoveToTheNextRecord", "median_ms", 8},
                                          {"ListOfTenThousand", "shown_ms", 50},
                                          {"ListOfTenThousand", "median_ms", 8},
                                          {"PickerShown/100000", "median_ms", 100},
                                          {"PickerShown/1000000", "growth", 20},
                                          {"PickerSearch", "median_ms", 150}}));
}
