// The people list of the demo host, with 100,000 persons.
#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTest>
#include <algorithm>

#include "adapters/qt/qt_platform.h"
#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "host/people_window.h"

namespace dossierkit::bench {
namespace {

// From a key in the search to the painted list: a part of a name is typed and taken away again, so that
// the list is narrowed and widened. The slowest key counts.
void KeyInTheSearch(benchmark::State& state) {
  const qt::QtPlatform platform;
  host::PeopleWindow window(std::make_shared<sqlite::SqliteConnection>(GeneratedDatabase(100'000, 10)),
                            [](const host::VisitRequest&, QWidget&) {});
  window.show();
  auto* search = window.findChild<QLineEdit*>();
  const auto paint = [] { QApplication::processEvents(); };
  paint();
  double slowest = 0;
  Samples samples;
  int key = 0;
  for (auto _ : state) {
    const double milliseconds = Milliseconds([&] {
      const int step = key++ % 4;
      if (step < 2) {
        QInputMethodEvent commit;
        commit.setCommitString(step == 0 ? "王" : "秀");
        QApplication::sendEvent(search, &commit);
      } else {
        QTest::keyClick(search, Qt::Key_Backspace);
      }
      paint();
    });
    samples.Add(milliseconds);
    state.SetIterationTime(milliseconds / 1000);
    slowest = std::max(slowest, milliseconds);
  }
  state.counters["median_ms"] = samples.Median();
  state.counters["slowest_ms"] = slowest;
}
BENCHMARK(KeyInTheSearch)->UseManualTime()->Iterations(80)->Unit(benchmark::kMillisecond);

// The window from its making to its first painting.
void PeopleShown(benchmark::State& state) {
  const qt::QtPlatform platform;
  const auto connection = std::make_shared<sqlite::SqliteConnection>(GeneratedDatabase(100'000, 10));
  Samples samples;
  for (auto _ : state) {
    Measure(state, samples, [&] {
      host::PeopleWindow window(connection, [](const host::VisitRequest&, QWidget&) {});
      window.show();
      QApplication::processEvents();
    });
  }
  state.counters["median_ms"] = samples.Median();
}
BENCHMARK(PeopleShown)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return dossierkit::bench::RunBenchmarks(
      argc, argv, {{"KeyInTheSearch", "slowest_ms", 16}, {"PeopleShown", "median_ms", 400}});
}
