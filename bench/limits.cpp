// The component beside what Qt and SQLite alone take for the same, in turns: the median of each turn's ratio.
#include <QApplication>
#include <QTableWidget>

#include "adapters/qt/qt_platform.h"
#include "bench/bare_page.h"
#include "bench/bench_visit.h"
#include "bench/measure.h"
#include "bench/plain_sqlite.h"
#include "bench/program_start.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/text_box.h"
#include "tests/support/paths.h"

namespace dossierkit::bench {
namespace {

// The times or sizes of one thing and of the yardstick, measured in turns.
class Beside {
 public:
  void Add(double ours, double bare) {
    ours_.Add(ours);
    bare_.Add(bare);
    ratios_.Add(ours / bare);
  }
  double Ratio() const { return ratios_.Median(); }
  void Tell(benchmark::State& state, const std::string& unit) const {
    state.counters["ours_" + unit] = ours_.Median();
    state.counters["bare_" + unit] = bare_.Median();
    state.counters[unit + "_ratio"] = Ratio();
  }

 private:
  Samples ours_;
  Samples bare_;
  // Turn by turn: a machine that is slower for a while is so for both.
  Samples ratios_;
};

// To the first page, beside a program that shows as much of the same person in plain Qt and SQLite.
void StartOfTheProgram(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  const std::vector<std::string> dossier = {tests::DossierProgram(), "--database", copy.Path(), "--person",
                                            kPerson};
  const std::vector<std::string> bare = {BARE_PROGRAM, copy.Path(), kPerson, tests::SourceFolder() + "/data"};
  // Their files are in memory from now on.
  StartProgram(dossier);
  StartProgram(bare);
  Beside time;
  Beside cpu;
  Beside memory;
  for (auto _ : state) {
    const Start ours = StartProgram(dossier);
    const Start theirs = StartProgram(bare);
    time.Add(ours.milliseconds, theirs.milliseconds);
    cpu.Add(ours.cpu_milliseconds, theirs.cpu_milliseconds);
    memory.Add(ours.mebibytes, theirs.mebibytes);
    state.SetIterationTime(ours.milliseconds / 1000);
  }
  time.Tell(state, "ms");
  cpu.Tell(state, "cpu_ms");
  memory.Tell(state, "MiB");
}
BENCHMARK(StartOfTheProgram)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

// The statements of Save and of the reload behind it, on an edited record of a person who has five; and the
// same texts one after the other in SQLite, on a database of its own that goes the same way.
void StatementsOfSave(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  const Copy other(tests::SampleDatabaseFile());
  PlainSqlite plain(other.Path());
  std::vector<std::string> statements;
  double milliseconds = 0;
  BenchVisit visit(copy.Path(), [&](const ado::Trace& trace) {
    statements.push_back(trace.statement);
    milliseconds += trace.milliseconds;
  });
  Beside time;
  visit.Open([&] {
    visit.GoTo("A03");
    bool longer = true;
    for (auto _ : state) {
      visit.user.ClickRow(1);
      visit.user.Click("A03_A0302_v");
      visit.user.Press(toolkit::kKeyEnd);
      if (longer) {
        visit.user.Type("x");
      } else {
        visit.user.Press(toolkit::kKeyBack);
      }
      longer = !longer;
      statements.clear();
      milliseconds = 0;
      visit.user.ClickToolbar("Save");
      time.Add(milliseconds, Milliseconds([&] {
                 for (const std::string& statement : statements) plain.Run(statement);
               }));
      state.SetIterationTime(milliseconds / 1000);
    }
  });
  time.Tell(state, "ms");
}
BENCHMARK(StatementsOfSave)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

// Of the list of A03 of the person.
constexpr int kRecords = 5;
constexpr int kColumns = 6;

// The texts in the fields of the page on show.
QStringList TextsOf(BenchVisit& visit) {
  QStringList texts;
  for (const auto& control : visit.Window().GetUserCtrl()->Controls()) {
    if (!control->Name().ends_with("_v")) continue;
    if (const auto* box = dynamic_cast<toolkit::TextBox*>(control.get())) {
      texts << QString::fromStdString(box->Text());
    } else if (const auto* masked = dynamic_cast<toolkit::MaskEdBox*>(control.get())) {
      texts << QString::fromStdString(masked->Text());
    }
  }
  return texts;
}

void Paint() { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

// A move to another record until it is painted; and a list with as many rows and a page with as many fields
// that are given the same row and texts, with the statements of the move in plain SQLite before.
void MoveToAnotherRecord(benchmark::State& state) {
  const Copy copy(tests::SampleDatabaseFile());
  const Copy other(tests::SampleDatabaseFile());
  PlainSqlite plain(other.Path());
  std::vector<std::string> statements;
  BenchVisit visit(copy.Path(), [&](const ado::Trace& trace) { statements.push_back(trace.statement); });
  Beside time;
  visit.Open([&] {
    visit.GoTo("A03");
    Paint();
    BarePage page(TextsOf(visit));
    QTableWidget list(kRecords, kColumns, &page);
    list.setGeometry(20, 300, 600, 200);
    list.setSelectionBehavior(QAbstractItemView::SelectRows);
    for (int cell = 0; cell < kRecords * kColumns; ++cell) {
      list.setItem(cell / kColumns, cell % kColumns, new QTableWidgetItem(QStringLiteral("二〇〇一年")));
    }
    page.show();
    Paint();
    bool forward = true;
    for (auto _ : state) {
      statements.clear();
      const double ours = Milliseconds([&] {
        visit.user.Press(forward ? 190 : 188, toolkit::kCtrl);
        Paint();
      });
      forward = !forward;
      const QStringList texts = TextsOf(visit);
      const double bare = Milliseconds([&] {
        for (const std::string& statement : statements) plain.Run(statement);
        list.selectRow(forward ? 0 : 1);
        page.SetTexts(texts);
        Paint();
      });
      time.Add(ours, bare);
      state.SetIterationTime(ours / 1000);
    }
  });
  time.Tell(state, "ms");
}
BENCHMARK(MoveToAnotherRecord)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dossierkit::bench

int main(int argc, char** argv) {
  using dossierkit::bench::RunBenchmarks;
  // Makes the program's application object, which looks at the screen as well.
  const dossierkit::qt::QtPlatform platform;
  return RunBenchmarks(argc, argv,
                       {{"StartOfTheProgram", "ms_ratio", 1.15},
                        {"StartOfTheProgram", "MiB_ratio", 1.15},
                        {"StatementsOfSave", "ms_ratio", 1.15},
                        {"MoveToAnotherRecord", "ms_ratio", 1.5}});
}
